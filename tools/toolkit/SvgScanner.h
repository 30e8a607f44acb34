#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace sptool {

// Thrown by SvgScanner where the text breaks the grammar: the offset of the offending character and what
// was expected there. Callers catch it at the boundary of one attribute.
struct ScanFailure {
    std::size_t offset;
    std::string expected;
    std::string problem = {}; // instead of `expected`, when the text is well formed but cannot be used
};

// A cursor over the text of an SVG attribute with the lexical pieces that path data, transform lists and
// viewBox share: whitespace, comma separators and numbers.
class SvgScanner {
  public:
    explicit SvgScanner(std::string_view text) : s_(text) {}

    bool atEnd() const { return i_ >= s_.size(); }
    char peek() const { return s_[i_]; }
    std::size_t offset() const { return i_; }
    void advance() { ++i_; }
    std::string_view text() const { return s_; }

    [[noreturn]] void fail(char const* expected) const { throw ScanFailure{i_, expected}; }

    void skipWhitespace();
    // Whitespace with at most one comma in it, as allowed between two numbers.
    void skipSeparator();
    bool atNumberStart() const;
    // number: sign? (digits ('.' digits?)? | '.' digits) (('e' | 'E') sign? digits)?; finite. Stops at the
    // first character that cannot continue the number, so "1.5.5" reads 1.5, then .5.
    double number();
    // A single '0' or '1', as arc flags are written.
    bool flag();

  private:
    std::size_t scanDigits();

    std::string_view s_;
    std::size_t i_ = 0;
};

// "at offset 12: expected a number, found 'x'"
std::string describeFailure(std::string_view text, ScanFailure const& failure);

// How a character found at `offset` is named in an error message: 'x', byte 0x07, or the end of the data.
std::string describeCharacterAt(std::string_view text, std::size_t offset);

} // namespace sptool
