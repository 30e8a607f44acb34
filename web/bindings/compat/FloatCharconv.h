#pragma once

// The C++ library that comes with this machine's WebAssembly compiler has the integer forms of
// std::to_chars and std::from_chars only. The path data reader and writer the editor shares with the
// command-line tool use the floating-point forms, so the web build force-includes this header into those
// two files, and nowhere else: the native builds use their own library's forms.
//
// Method: shortest round-trip text by finding the fewest significant digits (printf %g, 1 to 17) that
// strtod reads back as the same double, which gives the shortest correctly rounded digits as std::to_chars
// does (its layout may differ in where it switches to exponent notation); reading is strtod on a bounded
// copy.

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

namespace floatcharconv {

// Reads a decimal number exactly when that is cheap: at most 15 significant digits and a power of ten
// within 1e22 are both exact doubles, so one multiplication or division rounds correctly (Clinger's fast
// path). Anything else, and text that is not a plain decimal, is left to strtod (false). The C library's
// strtod works in 128-bit soft floating point here and costs microseconds a number, which a drawing of
// a million numbers cannot afford.
inline bool fastRead(char const* first, char const* last, double& value, char const*& stop) {
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    char const* p = first;
    bool const negative = p < last && *p == '-';
    if (negative) {
        ++p;
    }
    std::uint64_t mantissa = 0;
    int digits = 0;
    int scale = 0;
    bool any = false;
    for (; p < last && *p >= '0' && *p <= '9'; ++p, any = true) {
        if (mantissa != 0 || *p != '0') {
            if (++digits > 15) {
                return false;
            }
            mantissa = mantissa * 10 + std::uint64_t(*p - '0');
        }
    }
    if (p < last && *p == '.') {
        for (++p; p < last && *p >= '0' && *p <= '9'; ++p, any = true) {
            if (mantissa != 0 || *p != '0') {
                if (++digits > 15) {
                    return false;
                }
            }
            mantissa = mantissa * 10 + std::uint64_t(*p - '0');
            --scale;
        }
    }
    if (!any) {
        return false;
    }
    if (p < last && (*p == 'e' || *p == 'E')) {
        char const* q = p + 1;
        bool const negativeExponent = q < last && *q == '-';
        if (q < last && (*q == '-' || *q == '+')) {
            ++q;
        }
        if (q == last || *q < '0' || *q > '9') {
            return false;
        }
        int exponent = 0;
        for (; q < last && *q >= '0' && *q <= '9'; ++q) {
            if (exponent > 1000) {
                return false;
            }
            exponent = exponent * 10 + (*q - '0');
        }
        scale += negativeExponent ? -exponent : exponent;
        p = q;
    }
    if (scale < -22 || scale > 22) {
        return false;
    }
    double const m = double(mantissa);
    value = scale >= 0 ? m * kPowers[scale] : m / kPowers[-scale];
    if (negative) {
        value = -value;
    }
    stop = p;
    return true;
}

inline bool readsBackAs(char const* text, double value) {
    double read = 0.0;
    char const* stop = nullptr;
    if (fastRead(text, text + std::strlen(text), read, stop)) {
        return read == value;
    }
    return std::strtod(text, nullptr) == value;
}

} // namespace floatcharconv

namespace std {

inline to_chars_result to_chars(char* first, char* last, double value) {
    // More digits never read back worse, so the fewest that read back exactly are found by bisection.
    char text[40];
    int low = 1;
    int high = 17;
    while (std::isfinite(value) && low < high) {
        int const middle = (low + high) / 2;
        std::snprintf(text, sizeof text, "%.*g", middle, value);
        if (floatcharconv::readsBackAs(text, value)) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    int length = std::snprintf(text, sizeof text, "%.*g", high, value);
    // printf switches to exponent notation by its own rule; like std::to_chars, take the plain decimal
    // form unless the exponent form is shorter.
    if (char const* e = std::strchr(text, 'e')) {
        int const exponent = std::atoi(e + 1);
        char plain[400];
        int const plainLength = exponent >= 0
                                    ? std::snprintf(plain, sizeof plain, "%.0f", value)
                                    : std::snprintf(plain, sizeof plain, "%.*f", high - 1 - exponent, value);
        if (plainLength > 0 && plainLength < int(sizeof plain) && plainLength <= length &&
            floatcharconv::readsBackAs(plain, value)) {
            std::memcpy(text, plain, std::size_t(plainLength) + 1);
            length = plainLength;
        }
    }
    if (length < 0 || length > last - first) {
        return {last, errc::value_too_large};
    }
    std::memcpy(first, text, std::size_t(length));
    return {first + length, errc()};
}

inline to_chars_result to_chars(char* first, char* last, double value, chars_format, int precision) {
    char text[400];
    int const length = std::snprintf(text, sizeof text, "%.*f", precision, value);
    if (length < 0 || length >= int(sizeof text) || length > last - first) {
        return {last, errc::value_too_large};
    }
    std::memcpy(first, text, std::size_t(length));
    return {first + length, errc()};
}

inline from_chars_result from_chars(char const* first, char const* last, double& value) {
    char const* fastStop = nullptr;
    if (floatcharconv::fastRead(first, last, value, fastStop)) {
        return {fastStop, errc()};
    }
    std::string const copy(first, std::size_t(last - first));
    char* end = nullptr;
    errno = 0;
    double const read = std::strtod(copy.c_str(), &end);
    char const* stop = first + (end - copy.c_str());
    if (end == copy.c_str()) {
        return {first, errc::invalid_argument};
    }
    if (errno == ERANGE && (std::isinf(read) || read == 0.0)) {
        return {stop, errc::result_out_of_range};
    }
    value = read;
    return {stop, errc()};
}

} // namespace std
