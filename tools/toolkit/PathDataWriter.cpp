#include "toolkit/PathDataWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sptool {

void appendNumber(std::string& out, double value, NumberFormat format) {
    if (format.readable && format.decimals < 0 && std::fabs(value) < 1e15) {
        format.decimals = kReadableDecimals;
    }
    char buffer[64];
    std::to_chars_result written{};
    if (format.decimals >= 0) {
        written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                std::min(format.decimals, 17));
    } else {
        written = std::to_chars(buffer, buffer + sizeof buffer, value);
    }
    if (written.ec != std::errc()) {
        // Fixed notation of a huge value can exceed the buffer; the shortest form never does.
        written = std::to_chars(buffer, buffer + sizeof buffer, value);
    }
    std::string_view text(buffer, static_cast<std::size_t>(written.ptr - buffer));
    if (format.decimals >= 0 && text.find('.') != std::string_view::npos &&
        text.find('e') == std::string_view::npos) {
        while (text.back() == '0') {
            text.remove_suffix(1);
        }
        if (text.back() == '.') {
            text.remove_suffix(1);
        }
    }
    if (text == "-0") {
        text = "0";
    }
    out.append(text);
}

namespace {

// Writes numbers after a command letter, separating them only where the next does not start with '-'.
class DataBuilder {
  public:
    DataBuilder(std::string& out, NumberFormat format) : out_(out), format_(format) {}

    void command(char letter) {
        out_.push_back(letter);
        needSpace_ = false;
    }

    void point(DPoint const& p) {
        number(p.x);
        number(p.y);
    }

  private:
    void number(double value) {
        std::size_t const at = out_.size();
        appendNumber(out_, value, format_);
        if (needSpace_ && out_[at] != '-') {
            out_.insert(at, 1, ' ');
        }
        needSpace_ = true;
    }

    std::string& out_;
    NumberFormat format_;
    bool needSpace_ = false;
};

void appendChain(std::string& out, CubicChain const& chain, NumberFormat format) {
    DataBuilder builder(out, format);
    builder.command('M');
    builder.point(chain.start);
    std::size_t count = chain.segments.size();
    // The closing line of a closed chain is what Z draws; a lone segment is kept so the chain survives.
    // A closing line of no length is written out: Z would not draw it back, and the chain would read back
    // one vertex short.
    if (chain.closed && count > 1) {
        CubicSegment const& last = chain.segments.back();
        DPoint const from = segmentStart(chain, count - 1);
        if (last[2] == chain.start && from != chain.start && isStraight(from, last)) {
            --count;
        }
    }
    char previous = 0;
    for (std::size_t i = 0; i < count; ++i) {
        CubicSegment const& segment = chain.segments[i];
        if (isStraight(segmentStart(chain, i), segment)) {
            if (previous != 'L') {
                builder.command('L');
                previous = 'L';
            }
            builder.point(segment[2]);
        } else {
            if (previous != 'C') {
                builder.command('C');
                previous = 'C';
            }
            builder.point(segment[0]);
            builder.point(segment[1]);
            builder.point(segment[2]);
        }
    }
    if (chain.closed) {
        builder.command('Z');
    }
}

} // namespace

std::string writePathData(CubicChain const& chain, NumberFormat format) {
    std::string out;
    appendChain(out, chain, format);
    return out;
}

std::string writePathData(std::vector<CubicChain> const& chains, NumberFormat format) {
    std::string out;
    for (CubicChain const& chain : chains) {
        appendChain(out, chain, format);
    }
    return out;
}

} // namespace sptool
