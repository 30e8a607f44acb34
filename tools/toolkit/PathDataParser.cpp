#include "toolkit/PathDataParser.h"

#include "toolkit/SvgScanner.h"

#include <cmath>
#include <cstring>

namespace sptool {

std::string PathDataError::message() const {
    if (!problem.empty()) {
        return "at offset " + std::to_string(offset) + ": " + problem;
    }
    return "at offset " + std::to_string(offset) + ": expected " + expected + ", found " + found;
}

CubicSegment raiseQuadratic(DPoint const& p0, DPoint const& q, DPoint const& p2) {
    return {p0 + (q - p0) * (2.0 / 3.0), p2 + (q - p2) * (2.0 / 3.0), p2};
}

namespace {

bool isCommandLetter(char c) {
    return c != '\0' && std::strchr("MmLlHhVvCcSsQqTtAaZz", c) != nullptr;
}

// Reads the data left to right, one command at a time, keeping the state that relative and smooth
// commands depend on: the current point, the start of the subpath, the last control point.
class Parser {
  public:
    Parser(std::string_view data, double arcTolerance, ChainSink const& sink)
        : in_(data), arcTolerance_(arcTolerance), sink_(sink) {}

    void run() {
        in_.skipWhitespace();
        if (in_.atEnd()) {
            return;
        }
        if (in_.peek() != 'M' && in_.peek() != 'm') {
            in_.fail("a moveto command (M or m)");
        }
        while (true) {
            in_.skipWhitespace();
            if (in_.atEnd()) {
                break;
            }
            char const c = in_.peek();
            if (!isCommandLetter(c)) {
                in_.fail("a path command");
            }
            in_.advance();
            runCommand(c);
        }
        finishChain();
    }

  private:
    DPoint pair() {
        double const x = in_.number();
        in_.skipSeparator();
        double const y = in_.number();
        return {x, y};
    }

    DPoint relativeTo(DPoint const& p, bool relative) const { return relative ? cur_ + (p - DPoint()) : p; }

    // Runs one command with as many argument groups as follow it: further groups repeat the command,
    // except that groups after a moveto are linetos. Groups may be separated by one comma, but a comma
    // must be followed by another group.
    void runCommand(char command) {
        if (command == 'Z' || command == 'z') {
            closeSubpath();
            return;
        }
        while (true) {
            in_.skipWhitespace();
            runGroup(command);
            in_.skipWhitespace();
            if (!in_.atEnd() && in_.peek() == ',') {
                in_.advance();
                in_.skipWhitespace();
                if (!in_.atNumberStart()) {
                    in_.fail("a number");
                }
            }
            if (!in_.atNumberStart()) {
                return;
            }
            if (command == 'M') {
                command = 'L';
            } else if (command == 'm') {
                command = 'l';
            }
        }
    }

    void runGroup(char command) {
        groupStart_ = in_.offset();
        bool const relative = command >= 'a' && command <= 'z';
        char const upper = static_cast<char>(relative ? command - 'a' + 'A' : command);
        bool keepCubicControl = false;
        bool keepQuadControl = false;
        switch (upper) {
        case 'M': {
            DPoint const p = relativeTo(pair(), relative);
            checkFinite({p, p, p}, command);
            finishChain();
            chain_ = CubicChain{p, {}, false};
            active_ = true;
            cur_ = subpathStart_ = p;
            break;
        }
        case 'L':
            lineTo(relativeTo(pair(), relative), command);
            break;
        case 'H': {
            double const x = in_.number();
            lineTo(DPoint(relative ? cur_.x + x : x, cur_.y), command);
            break;
        }
        case 'V': {
            double const y = in_.number();
            lineTo(DPoint(cur_.x, relative ? cur_.y + y : y), command);
            break;
        }
        case 'C':
        case 'S': {
            // S reflects the previous cubic's second control about the current point, if there was one.
            DPoint c1 = hadCubic_ ? cur_ + (cur_ - lastControl_) : cur_;
            if (upper == 'C') {
                c1 = relativeTo(pair(), relative);
                in_.skipSeparator();
            }
            DPoint const c2 = relativeTo(pair(), relative);
            in_.skipSeparator();
            DPoint const p = relativeTo(pair(), relative);
            addSegment({c1, c2, p}, command);
            lastControl_ = c2;
            keepCubicControl = true;
            break;
        }
        case 'Q':
        case 'T': {
            // T reflects the previous quadratic's control the same way.
            DPoint q = hadQuad_ ? cur_ + (cur_ - lastControl_) : cur_;
            if (upper == 'Q') {
                q = relativeTo(pair(), relative);
                in_.skipSeparator();
            }
            DPoint const p = relativeTo(pair(), relative);
            checkFinite({q, q, q}, command);
            addSegment(raiseQuadratic(cur_, q, p), command);
            lastControl_ = q;
            keepQuadControl = true;
            break;
        }
        case 'A': {
            EndpointArc arc;
            arc.from = cur_;
            arc.rx = in_.number();
            in_.skipSeparator();
            arc.ry = in_.number();
            in_.skipSeparator();
            arc.rotationDegrees = in_.number();
            in_.skipSeparator();
            arc.largeArc = in_.flag();
            in_.skipSeparator();
            arc.sweep = in_.flag();
            in_.skipSeparator();
            arc.to = relativeTo(pair(), relative);
            beginSegments();
            checkFinite({arc.to, arc.to, arc.to}, command);
            std::size_t const before = chain_.segments.size();
            appendArcCubics(arc, arcTolerance_, chain_.segments);
            for (std::size_t k = before; k < chain_.segments.size(); ++k) {
                checkFinite(chain_.segments[k], command);
            }
            cur_ = arc.to;
            break;
        }
        default:
            break;
        }
        hadCubic_ = keepCubicControl;
        hadQuad_ = keepQuadControl;
    }

    // A drawing command right after a closepath starts a new subpath at the closed one's start.
    void beginSegments() {
        if (!active_) {
            chain_ = CubicChain{cur_, {}, false};
            active_ = true;
        }
    }

    // Numbers are finite when read, but relative coordinates and reflected controls are sums that can
    // leave the range of doubles; such data is refused rather than drawn through infinity.
    void checkFinite(CubicSegment const& points, char command) const {
        for (DPoint const& p : points) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
                throw ScanFailure{groupStart_, "",
                                  std::string("the coordinates of this ") + command +
                                      " command overflow the range of double precision"};
            }
        }
    }

    void addSegment(CubicSegment const& segment, char command) {
        checkFinite(segment, command);
        beginSegments();
        chain_.segments.push_back(segment);
        cur_ = segment[2];
    }

    void lineTo(DPoint const& p, char command) { addSegment({cur_, p, p}, command); }

    void closeSubpath() {
        if (active_) {
            if (cur_ != chain_.start) {
                lineTo(chain_.start, 'Z');
            }
            chain_.closed = true;
            finishChain();
        }
        cur_ = subpathStart_;
        hadCubic_ = hadQuad_ = false;
    }

    void finishChain() {
        if (active_ && !chain_.segments.empty()) {
            sink_(std::move(chain_));
        }
        chain_ = CubicChain{};
        active_ = false;
    }

    SvgScanner in_;
    std::size_t groupStart_ = 0; // where the argument group being read begins
    double arcTolerance_;
    ChainSink const& sink_;
    CubicChain chain_;
    bool active_ = false;
    DPoint cur_;
    DPoint subpathStart_;
    DPoint lastControl_;
    bool hadCubic_ = false;
    bool hadQuad_ = false;
};

} // namespace

std::optional<PathDataError> parsePathData(std::string_view data, ChainSink const& sink,
                                           double arcTolerance) {
    try {
        Parser(data, arcTolerance, sink).run();
    } catch (ScanFailure const& failure) {
        return PathDataError{failure.offset, failure.expected, describeCharacterAt(data, failure.offset),
                             failure.problem};
    }
    return std::nullopt;
}

PathDataResult parsePathData(std::string_view data, double arcTolerance) {
    PathDataResult result;
    result.error = parsePathData(
        data, [&result](CubicChain&& chain) { result.chains.push_back(std::move(chain)); }, arcTolerance);
    return result;
}

} // namespace sptool
