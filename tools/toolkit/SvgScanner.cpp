#include "toolkit/SvgScanner.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <system_error>

namespace sptool {
namespace {

bool isWhitespace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Whether a decimal number that a double cannot hold lies below the smallest double rather than above the
// largest: its decimal exponent (the written exponent plus the place of its first non-zero digit) is
// negative. The exponent's digits are summed with saturation, so any length of text is safe.
bool isTiny(std::string_view number) {
    std::size_t const e = number.find_first_of("eE");
    std::string_view const mantissa = number.substr(0, e);
    long long exponent = 0;
    if (e != std::string_view::npos) {
        std::size_t k = e + 1;
        bool const negative = k < number.size() && number[k] == '-';
        if (k < number.size() && (number[k] == '-' || number[k] == '+')) {
            ++k;
        }
        for (; k < number.size(); ++k) {
            exponent = std::min(exponent * 10 + (number[k] - '0'), 1000000000000LL);
        }
        exponent = negative ? -exponent : exponent;
    }
    std::size_t const point = std::min(mantissa.find('.'), mantissa.size());
    std::size_t const firstDigit = mantissa.find_first_of("123456789");
    if (firstDigit == std::string_view::npos) {
        return true; // all zeros: not out of range at all, but zero either way
    }
    long long const place = firstDigit < point ? static_cast<long long>(point - firstDigit) - 1
                                               : -static_cast<long long>(firstDigit - point);
    return exponent + place < 0;
}

} // namespace

void SvgScanner::skipWhitespace() {
    while (!atEnd() && isWhitespace(s_[i_])) {
        ++i_;
    }
}

void SvgScanner::skipSeparator() {
    skipWhitespace();
    if (!atEnd() && s_[i_] == ',') {
        ++i_;
        skipWhitespace();
    }
}

bool SvgScanner::atNumberStart() const {
    if (atEnd()) {
        return false;
    }
    char const c = s_[i_];
    return isDigit(c) || c == '.' || c == '-' || c == '+';
}

std::size_t SvgScanner::scanDigits() {
    std::size_t const from = i_;
    while (!atEnd() && isDigit(s_[i_])) {
        ++i_;
    }
    return i_ - from;
}

double SvgScanner::number() {
    std::size_t const start = i_;
    bool negative = false;
    if (!atEnd() && (s_[i_] == '+' || s_[i_] == '-')) {
        negative = s_[i_] == '-';
        ++i_;
    }
    std::size_t const mantissa = i_;
    std::size_t digits = scanDigits();
    if (!atEnd() && s_[i_] == '.') {
        ++i_;
        digits += scanDigits();
    }
    if (digits == 0) {
        i_ = start;
        fail("a number");
    }
    if (!atEnd() && (s_[i_] == 'e' || s_[i_] == 'E')) {
        ++i_;
        if (!atEnd() && (s_[i_] == '+' || s_[i_] == '-')) {
            ++i_;
        }
        if (scanDigits() == 0) {
            fail("the digits of an exponent");
        }
    }
    double value = 0.0;
    auto const [end, ec] = std::from_chars(s_.data() + mantissa, s_.data() + i_, value);
    if (ec == std::errc::result_out_of_range) {
        // Too large or too small for a double. Which one is decided by the number's decimal magnitude, not
        // by its exponent alone: "0.000...01" underflows without an exponent, "1e-999" too, and both read
        // as 0, while "1e400" and a long run of digits before the point overflow and are refused.
        if (!isTiny(s_.substr(mantissa, i_ - mantissa))) {
            i_ = start;
            fail("a number within the range of double precision");
        }
        value = 0.0;
    } else if (ec != std::errc() || end != s_.data() + i_) {
        i_ = start;
        fail("a number");
    }
    return negative ? -value : value;
}

bool SvgScanner::flag() {
    if (atEnd() || (s_[i_] != '0' && s_[i_] != '1')) {
        fail("an arc flag (0 or 1)");
    }
    return s_[i_++] == '1';
}

std::string describeCharacterAt(std::string_view text, std::size_t offset) {
    if (offset >= text.size()) {
        return "the end of the data";
    }
    unsigned char const c = static_cast<unsigned char>(text[offset]);
    if (c < 0x20 || c >= 0x7f) {
        char buffer[8];
        std::snprintf(buffer, sizeof buffer, "0x%02X", c);
        return std::string("byte ") + buffer;
    }
    return std::string("'") + static_cast<char>(c) + "'";
}

std::string describeFailure(std::string_view text, ScanFailure const& failure) {
    if (!failure.problem.empty()) {
        return "at offset " + std::to_string(failure.offset) + ": " + failure.problem;
    }
    return "at offset " + std::to_string(failure.offset) + ": expected " + failure.expected + ", found " +
           describeCharacterAt(text, failure.offset);
}

} // namespace sptool
