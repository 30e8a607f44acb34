#include "toolkit/SvgTransform.h"

#include "toolkit/SvgScanner.h"

#include <cmath>
#include <vector>

namespace sptool {
namespace {

constexpr double kPi = 3.14159265358979323846;

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// The arguments between the parentheses; the cursor stands after the name.
std::vector<double> readArguments(SvgScanner& in) {
    in.skipWhitespace();
    if (in.atEnd() || in.peek() != '(') {
        in.fail("'('");
    }
    in.advance();
    std::vector<double> args;
    in.skipWhitespace();
    while (!in.atEnd() && in.peek() != ')') {
        if (!args.empty()) {
            in.skipSeparator();
        }
        args.push_back(in.number());
        in.skipWhitespace();
    }
    if (in.atEnd()) {
        in.fail("')'");
    }
    in.advance();
    return args;
}

// SVG's matrix(a b c d e f) maps (x, y) to (a x + c y + e, b x + d y + f).
P2DTrans svgMatrix(double a, double b, double c, double d, double e, double f) {
    return P2DTrans(a, c, b, d, e, f);
}

P2DTrans readOne(SvgScanner& in) {
    std::size_t const nameStart = in.offset();
    while (!in.atEnd() && isNameCharacter(in.peek())) {
        in.advance();
    }
    std::string_view const name = in.text().substr(nameStart, in.offset() - nameStart);
    std::size_t const argumentsStart = in.offset();
    // Throws unless the function got one of the allowed argument counts, e.g. "1 or 3 numbers".
    auto fits = [&](std::vector<double> const& args, std::size_t low, std::size_t high, char const* counts) {
        if (args.size() != low && args.size() != high) {
            throw ScanFailure{argumentsStart, std::string(counts) + " in " + std::string(name) + "()"};
        }
    };
    if (name == "matrix") {
        auto const a = readArguments(in);
        fits(a, 6, 6, "6 numbers");
        return svgMatrix(a[0], a[1], a[2], a[3], a[4], a[5]);
    }
    if (name == "translate") {
        auto const a = readArguments(in);
        fits(a, 1, 2, "1 or 2 numbers");
        return svgMatrix(1, 0, 0, 1, a[0], a.size() > 1 ? a[1] : 0.0);
    }
    if (name == "scale") {
        auto const a = readArguments(in);
        fits(a, 1, 2, "1 or 2 numbers");
        return svgMatrix(a[0], 0, 0, a.size() > 1 ? a[1] : a[0], 0, 0);
    }
    if (name == "rotate") {
        auto const a = readArguments(in);
        fits(a, 1, 3, "1 or 3 numbers");
        double const r = a[0] * kPi / 180.0;
        double const c = std::cos(r);
        double const s = std::sin(r);
        double const cx = a.size() == 3 ? a[1] : 0.0;
        double const cy = a.size() == 3 ? a[2] : 0.0;
        // translate(cx cy) rotate(r) translate(-cx -cy)
        return svgMatrix(c, s, -s, c, cx - c * cx + s * cy, cy - s * cx - c * cy);
    }
    if (name == "skewX" || name == "skewY") {
        auto const a = readArguments(in);
        fits(a, 1, 1, "1 number");
        double const t = std::tan(a[0] * kPi / 180.0);
        return name == "skewX" ? svgMatrix(1, 0, t, 1, 0, 0) : svgMatrix(1, t, 0, 1, 0, 0);
    }
    throw ScanFailure{nameStart, "a transform function (matrix, translate, scale, rotate, skewX, skewY)"};
}

} // namespace

TransformResult parseTransformList(std::string_view text) {
    TransformResult result;
    SvgScanner in(text);
    try {
        in.skipWhitespace();
        while (!in.atEnd()) {
            result.transform = result.transform * readOne(in);
            in.skipSeparator();
        }
    } catch (ScanFailure const& failure) {
        result.transform = P2DTrans();
        result.error = describeFailure(text, failure);
    }
    return result;
}

double stretchBound(P2DTrans const& transform) {
    DVector const x = transform.matrix().xAxis();
    DVector const y = transform.matrix().yAxis();
    return std::sqrt(x.squaredLength() + y.squaredLength());
}

} // namespace sptool
