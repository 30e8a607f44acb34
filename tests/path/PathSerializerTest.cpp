// Writing and reading paths: the call-by-call layout, statuses, hostile streams and bit-exact round trips.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathSerializer.h"
#include "support/PathHelpers.h"

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;
constexpr Mode kSmooth = SimplePathVertexTriple::Smooth;
constexpr Mode kCusp = SimplePathVertexTriple::Cusp;
constexpr Mode kSymmetric = SimplePathVertexTriple::Symmetric;

// Notes every call as text ("s:", "b:2", "i:1", "d:1.5") and fails the call numbered `failAt`.
class RecordingSerializer : public Serializer {
  public:
    std::vector<std::string> calls;
    int failAt = -1;
    int writeInt(std::int32_t value) override { return note("i:" + std::to_string(value)); }
    int writeCoordinate(double value) override { return note("c:" + text(value)); }
    int writeDouble(double value) override { return note("d:" + text(value)); }
    int writeByte(std::uint8_t value) override { return note("b:" + std::to_string(value)); }
    int writeString(PString const& value) override { return note("s:" + value.str()); }

  private:
    static std::string text(double value) {
        std::ostringstream out;
        out << value;
        return out.str();
    }
    int note(std::string call) {
        calls.push_back(std::move(call));
        return static_cast<int>(calls.size()) - 1 == failAt ? 1 : 0;
    }
};

// Plays back a script of typed reads. A read of another kind than the script's next step, or past its
// end, fails with status 1, so the script also checks which slot the reader uses.
class ScriptedDeserializer : public Deserializer {
  public:
    enum Kind { String, Byte, Int, Double, Coordinate };
    struct Step {
        Kind kind;
        double value;
        int status;
    };
    std::vector<Step> script;
    std::size_t next = 0;

    ScriptedDeserializer& add(Kind kind, double value, int status = 0) {
        script.push_back({kind, value, status});
        return *this;
    }
    // The header of a version-2 stream: string, version, closed byte, count.
    ScriptedDeserializer& header(int closed, int count) {
        return add(String, 0).add(Byte, 2).add(Byte, closed).add(Int, count);
    }
    ScriptedDeserializer& point(double x, double y) { return add(Double, x).add(Double, y); }
    ScriptedDeserializer& retracted(double x, double y) { return add(Byte, 7).point(x, y); }

    int readString(PString& value) override {
        double ignored = 0;
        value = PString("header");
        return take(String, ignored);
    }
    int readByte(std::uint8_t& value) override { return take(Byte, value); }
    int readInt(std::int32_t& value) override { return take(Int, value); }
    int readDouble(double& value) override { return take(Double, value); }
    int readCoordinate(double& value) override { return take(Coordinate, value); }

  private:
    template <class T> int take(Kind kind, T& value) {
        if (next >= script.size() || script[next].kind != kind) {
            return 1;
        }
        value = static_cast<T>(script[next].value);
        return script[next++].status;
    }
};

void addTriple(SimplePath& path, DPoint first, DPoint anchor, DPoint last, Mode mode) {
    ASSERT_EQ(SimplePath::Success, appendTriple(path, first, anchor, last, mode));
}

std::string bytesOf(SimplePath& path) {
    std::ostringstream out;
    BinarySerializer serializer(out);
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::write(&path, serializer));
    return out.str();
}

} // namespace

TEST(PathSerializer, WritesFormatTwoCallByCallAndStopsAtAFailedWrite) {
    // Full records carry the incoming handle, the anchor and the outgoing handle; one handle on the
    // anchor is not enough for a short record. A mode without a code repeats the previous code.
    SimplePath path;
    addTriple(path, {0, 1}, {1, 1}, {2, 1}, kSmooth);
    addTriple(path, {5, 5}, {5, 5}, {5, 5}, kSymmetric);
    addTriple(path, {3, 3}, {3, 3}, {4, 3}, static_cast<Mode>(9));
    addTriple(path, {6, 6}, {6, 6}, {6, 6}, kCusp);
    path.setStrictClosed(5);
    RecordingSerializer out;
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::write(&path, out));
    EXPECT_EQ((std::vector<std::string>{"s:",  "b:2", "b:1", "i:4",                      //
                                        "b:2", "d:0", "d:1", "d:1", "d:1", "d:2", "d:1", //
                                        "b:5", "d:5", "d:5",                             //
                                        "b:1", "d:3", "d:3", "d:3", "d:3", "d:4", "d:3", //
                                        "b:7", "d:6", "d:6"}),
              out.calls);
    for (int fail = 0; fail < static_cast<int>(out.calls.size()); ++fail) {
        RecordingSerializer failing;
        failing.failAt = fail;
        EXPECT_EQ(SimplePathSerializer::Failure, SimplePathSerializer::write(&path, failing)) << fail;
        EXPECT_EQ(static_cast<std::size_t>(fail) + 1, failing.calls.size()) << "nothing after a failure";
    }

    SimplePath odd; // with no vertex before it, a mode without a code is written as 0 (4 when retracted)
    addTriple(odd, {2, 2}, {2, 2}, {2, 2}, static_cast<Mode>(-3));
    RecordingSerializer oddOut;
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::write(&odd, oddOut));
    EXPECT_EQ("b:4", oddOut.calls.at(4));
    RecordingSerializer unused;
    EXPECT_EQ(SimplePathSerializer::Failure,
              SimplePathSerializer::write(PHashablePointer<SimplePath>(), unused));
    EXPECT_TRUE(unused.calls.empty());
}

TEST(PathSerializer, RandomPathsRoundTripBitForBit) {
    std::mt19937_64 random(20240611);
    std::uniform_int_distribution<int> choice(0, 5);
    auto randomDouble = [&] { // now and then any bit pattern: NaN, infinities, subnormals
        if (choice(random) == 0) {
            std::uint64_t const bits = random();
            double value = 0.0;
            std::memcpy(&value, &bits, sizeof value);
            return value;
        }
        return std::uniform_real_distribution<double>(-1e6, 1e6)(random);
    };
    for (int round = 0; round < 40; ++round) {
        SimplePath path;
        for (int i = round == 0 ? 0 : 1 + choice(random) * 7; i > 0; --i) {
            DPoint const anchor(randomDouble(), randomDouble());
            int const handles = choice(random);
            DPoint const first = handles < 3 ? anchor : DPoint(randomDouble(), randomDouble());
            DPoint const last = handles < 2 ? anchor : DPoint(randomDouble(), randomDouble());
            addTriple(path, first, anchor, last, static_cast<Mode>(choice(random) % 3));
        }
        path.setStrictClosed(choice(random) % 2);
        std::string const bytes = bytesOf(path);
        std::istringstream in(bytes);
        BinaryDeserializer deserializer(in);
        PHashablePointer<SimplePath> read;
        ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::readNew(deserializer, read));
        EXPECT_EQ(EOF, in.peek()) << "the whole stream is read";
        EXPECT_EQ(bytes, bytesOf(*read)) << round; // every coordinate, mode and flag, bit for bit
        delete read.getPointer();
    }
    // Retraction is decided by equality, under which -0.0 equals 0.0: such a handle is stored as
    // retracted and comes back with the anchor's bits.
    SimplePath zero;
    addTriple(zero, {-0.0, 1.0}, {0.0, 1.0}, {0.0, 1.0}, kCusp);
    std::istringstream in(bytesOf(zero));
    BinaryDeserializer deserializer(in);
    SimplePath read;
    ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&read, deserializer));
    DPoint const expected(0.0, 1.0), first = locationsOf(read).at(0).first;
    EXPECT_EQ(0, std::memcmp(&expected, &first, sizeof first));
}

TEST(PathSerializer, VertexCodesMapToModesAndRecordLengths) {
    using S = ScriptedDeserializer;
    struct Case {
        int code;
        bool shortRecord;
        Mode mode;
    };
    Case const cases[] = {{0, false, kCusp}, {1, false, kSymmetric}, {2, false, kSmooth}, {3, false, kCusp},
                          {4, false, kCusp}, {5, true, kSymmetric},  {6, true, kSmooth},  {7, true, kCusp},
                          {8, true, kCusp},  {255, true, kCusp}};
    for (Case const& c : cases) {
        S in;
        in.header(0, 1).add(S::Byte, c.code);
        c.shortRecord ? in.point(3, 4) : in.point(1, 2).point(3, 4).point(5, 6);
        SimplePath path;
        ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&path, in)) << c.code;
        EXPECT_EQ(in.script.size(), in.next) << c.code;
        DPoint const first = c.shortRecord ? DPoint(3, 4) : DPoint(1, 2),
                     last = c.shortRecord ? DPoint(3, 4) : DPoint(5, 6);
        EXPECT_EQ(SimplePathLocationTriple(first, {3, 4}, last, c.mode), locationsOf(path).at(0)) << c.code;
    }
    // Version one: six coordinate reads, then a mode byte; a 5 there is not a short record.
    S v1;
    v1.add(S::String, 0).add(S::Byte, 1).add(S::Byte, 1).add(S::Int, 2);
    for (double value : {1, 2, 3, 4, 5, 6, 1, 7, 7, 7, 7, 7, 7, 5}) {
        v1.add(v1.script.size() % 7 == 3 ? S::Byte : S::Coordinate, value);
    }
    SimplePath path;
    ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&path, v1));
    EXPECT_EQ(v1.script.size(), v1.next);
    EXPECT_EQ(1, path.isClosedSimplePath());
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{{{1, 2}, {3, 4}, {5, 6}, kSymmetric},
                                                     {{7, 7}, {7, 7}, {7, 7}, kCusp}}),
              locationsOf(path));
}

TEST(PathSerializer, HeaderAndVersionStatuses) {
    using S = ScriptedDeserializer;
    struct Case {
        int headerStatus, versionStatus, version, expected;
        bool allocates;
    };
    // Only 1 and 2 fail in the header; any other status there counts as success.
    Case const cases[] = {
        {2, 0, 2, 2, false}, {1, 0, 2, 1, false}, {0, 2, 2, 2, false}, {0, 1, 2, 1, false},
        {3, -1, 2, 0, true}, {0, 0, 3, 1, false}, {0, 0, 0, 1, false}, {0, 0, 1, 0, true},
    };
    for (Case const& c : cases) {
        S in;
        in.add(S::String, 0, c.headerStatus)
            .add(S::Byte, c.version, c.versionStatus)
            .add(S::Byte, 0)
            .add(S::Int, 0);
        PHashablePointer<SimplePath> made;
        EXPECT_EQ(c.expected, SimplePathSerializer::readNew(in, made))
            << c.headerStatus << " " << c.versionStatus;
        EXPECT_EQ(c.allocates, made != nullptr);
        delete made.getPointer();
    }
    S untouched; // read checks its path before touching the stream
    untouched.add(S::String, 0);
    EXPECT_EQ(SimplePathSerializer::Failure,
              SimplePathSerializer::read(PHashablePointer<SimplePath>(), untouched));
    EXPECT_EQ(0u, untouched.next);
}

TEST(PathSerializer, BodyFailuresKeepWhatWasReadAndCountsAreNotTrusted) {
    using S = ScriptedDeserializer;
    // Status 2 inside the body is an ordinary failure; the closed flag is set before the vertices.
    S in;
    in.header(1, 3).retracted(1, 1).add(S::Byte, 7).add(S::Double, 2).add(S::Double, 2, 2);
    SimplePath path;
    EXPECT_EQ(SimplePathSerializer::Failure, SimplePathSerializer::read(&path, in));
    EXPECT_EQ(1, path.numTriples());
    EXPECT_EQ(1, path.isClosedSimplePath());
    // Reading appends, and a closed byte other than 1 leaves the flag alone.
    S more;
    more.header(0, 1).add(S::Byte, 6).point(9, 9);
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&path, more));
    EXPECT_EQ(2, path.numTriples());
    EXPECT_EQ(1, path.isClosedSimplePath());
    S negative;
    negative.header(0, -5).retracted(1, 1);
    SimplePath none;
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&none, negative));
    EXPECT_EQ(0, none.numTriples());
    EXPECT_EQ(4u, negative.next) << "a negative count reads no record";

    // A count of 2^31 - 1 before two records and a truncated third: fails fast, without reserving.
    S huge;
    huge.header(0, 2147483647).retracted(0, 0).retracted(1, 1).add(S::Byte, 2).add(S::Double, 1);
    PHashablePointer<SimplePath> read;
    EXPECT_EQ(SimplePathSerializer::Failure, SimplePathSerializer::readNew(huge, read));
    ASSERT_NE(nullptr, read);
    EXPECT_EQ(2, read->numTriples());
    delete read.getPointer();
}

TEST(PathSerializer, EveryTruncationFailsAndKeepsTheWholeRecords) {
    SimplePath path;
    addTriple(path, {0, 1}, {1, 1}, {2, 1}, kSmooth);
    addTriple(path, {5, 5}, {5, 5}, {5, 5}, kCusp);
    addTriple(path, {7, 7}, {8, 8}, {9, 9}, kSymmetric);
    path.setStrictClosed(1);
    std::string const bytes = bytesOf(path);
    std::size_t const header = 4 + 1 + 1 + 4;
    std::size_t const recordEnds[] = {header + 49, header + 49 + 17, header + 49 + 17 + 49};
    ASSERT_EQ(recordEnds[2], bytes.size());
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        std::istringstream in(bytes.substr(0, length));
        BinaryDeserializer deserializer(in);
        PHashablePointer<SimplePath> read;
        EXPECT_EQ(SimplePathSerializer::Failure, SimplePathSerializer::readNew(deserializer, read)) << length;
        EXPECT_EQ(length < 5, read == nullptr) << length;
        if (read != nullptr) {
            int whole = 0;
            for (std::size_t end : recordEnds) {
                whole += length >= end ? 1 : 0;
            }
            EXPECT_EQ(whole, read->numTriples()) << length;
            EXPECT_EQ(length > 5 ? 1 : 0, read->isClosedSimplePath()) << length;
        }
        delete read.getPointer();
    }
}
