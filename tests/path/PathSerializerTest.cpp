#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
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

// Notes every call as text ("s:", "b:2", "i:1", "d:1.5") and can be told to fail at the n-th call.
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

// Plays back a script of typed reads. A read of another kind than the script expects, or past its
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
    ScriptedDeserializer& point(double x, double y) { return add(Double, x).add(Double, y); }

    int readString(PString& value) override {
        double ignored = 0.0;
        int const status = take(String, ignored);
        value = PString("header");
        return status;
    }
    int readByte(std::uint8_t& value) override {
        double read = 0.0;
        int const status = take(Byte, read);
        value = static_cast<std::uint8_t>(read);
        return status;
    }
    int readInt(std::int32_t& value) override {
        double read = 0.0;
        int const status = take(Int, read);
        value = static_cast<std::int32_t>(read);
        return status;
    }
    int readDouble(double& value) override { return take(Double, value); }
    int readCoordinate(double& value) override { return take(Coordinate, value); }

  private:
    int take(Kind kind, double& value) {
        if (next >= script.size() || script[next].kind != kind) {
            return 1;
        }
        value = script[next].value;
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

bool sameBits(DPoint const& a, DPoint const& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace

TEST(PathSerializer, WritesFormatTwoCallByCall) {
    SimplePath path;
    addTriple(path, {1, 2}, {1, 2}, {1, 2}, SimplePathVertexTriple::Cusp);
    RecordingSerializer single;
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::write(&path, single));
    EXPECT_EQ((std::vector<std::string>{"s:", "b:2", "b:0", "i:1", "b:7", "d:1", "d:2"}), single.calls);

    // Full records carry the incoming handle, the anchor and the outgoing handle; one handle on the
    // anchor is not enough for a short record. A mode without a code repeats the previous code.
    SimplePath mixed;
    addTriple(mixed, {0, 1}, {1, 1}, {2, 1}, SimplePathVertexTriple::Smooth);
    addTriple(mixed, {5, 5}, {5, 5}, {5, 5}, SimplePathVertexTriple::Symmetric);
    addTriple(mixed, {3, 3}, {3, 3}, {4, 3}, static_cast<Mode>(9));
    addTriple(mixed, {6, 6}, {6, 6}, {6, 6}, SimplePathVertexTriple::Cusp);
    mixed.setStrictClosed(5);
    RecordingSerializer out;
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::write(&mixed, out));
    EXPECT_EQ((std::vector<std::string>{"s:",  "b:2", "b:1", "i:4",                      //
                                        "b:2", "d:0", "d:1", "d:1", "d:1", "d:2", "d:1", //
                                        "b:5", "d:5", "d:5",                             //
                                        "b:1", "d:3", "d:3", "d:3", "d:3", "d:4", "d:3", //
                                        "b:7", "d:6", "d:6"}),
              out.calls);

    // With no vertex before it, a mode without a code is written as code 0 (4 when retracted).
    SimplePath odd;
    addTriple(odd, {2, 2}, {2, 2}, {2, 2}, static_cast<Mode>(-3));
    RecordingSerializer oddOut;
    SimplePathSerializer::write(&odd, oddOut);
    EXPECT_EQ("b:4", oddOut.calls.at(4));

    SimplePath empty;
    RecordingSerializer emptyOut;
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::write(&empty, emptyOut));
    EXPECT_EQ((std::vector<std::string>{"s:", "b:2", "b:0", "i:0"}), emptyOut.calls);
}

TEST(PathSerializer, AnyFailedWriteStopsWithFailure) {
    SimplePath path;
    addTriple(path, {0, 1}, {1, 1}, {2, 1}, SimplePathVertexTriple::Smooth);
    addTriple(path, {5, 5}, {5, 5}, {5, 5}, SimplePathVertexTriple::Cusp);
    RecordingSerializer all;
    SimplePathSerializer::write(&path, all);
    for (int fail = 0; fail < static_cast<int>(all.calls.size()); ++fail) {
        RecordingSerializer out;
        out.failAt = fail;
        EXPECT_EQ(SimplePathSerializer::Failure, SimplePathSerializer::write(&path, out)) << "call " << fail;
        EXPECT_EQ(static_cast<std::size_t>(fail) + 1, out.calls.size()) << "nothing written after a failure";
    }
    RecordingSerializer unused;
    EXPECT_EQ(SimplePathSerializer::Failure,
              SimplePathSerializer::write(PHashablePointer<SimplePath>(), unused));
    EXPECT_TRUE(unused.calls.empty());
}

TEST(PathSerializer, RandomPathsRoundTripBitForBit) {
    std::mt19937_64 random(20240611);
    std::uniform_int_distribution<int> choice(0, 5);
    auto randomDouble = [&] {
        // Ordinary values most of the time; now and then any bit pattern (NaN, infinities, subnormals).
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
        int const n = round == 0 ? 0 : 1 + choice(random) * 7;
        for (int i = 0; i < n; ++i) {
            DPoint const anchor(randomDouble(), randomDouble());
            DPoint first(randomDouble(), randomDouble());
            DPoint last(randomDouble(), randomDouble());
            int const handles = choice(random);
            if (handles < 3) {
                first = anchor;
            }
            if (handles < 2) {
                last = anchor;
            }
            addTriple(path, first, anchor, last, static_cast<Mode>(choice(random) % 3));
        }
        path.setStrictClosed(choice(random) % 2);

        std::istringstream in(bytesOf(path));
        BinaryDeserializer deserializer(in);
        PHashablePointer<SimplePath> read;
        ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::readNew(deserializer, read));
        ASSERT_NE(nullptr, read);
        EXPECT_EQ(EOF, in.peek()) << "the whole stream is read";
        EXPECT_EQ(path.isClosedSimplePath(), read->isClosedSimplePath());
        auto const expected = locationsOf(path);
        auto const actual = locationsOf(*read);
        ASSERT_EQ(expected.size(), actual.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_TRUE(sameBits(expected[i].first, actual[i].first)) << "round " << round << " vertex " << i;
            EXPECT_TRUE(sameBits(expected[i].anchor, actual[i].anchor))
                << "round " << round << " vertex " << i;
            EXPECT_TRUE(sameBits(expected[i].last, actual[i].last)) << "round " << round << " vertex " << i;
            EXPECT_EQ(expected[i].mode, actual[i].mode);
        }
        delete read.getPointer();
    }
}

TEST(PathSerializer, ShortRecordsKeepOnlyWhatEqualityCanSee) {
    // Retraction is decided by exact equality, under which -0.0 equals 0.0: such a handle is stored as
    // retracted and comes back with the anchor's bits.
    SimplePath path;
    addTriple(path, {-0.0, 1.0}, {0.0, 1.0}, {0.0, 1.0}, SimplePathVertexTriple::Cusp);
    std::istringstream in(bytesOf(path));
    BinaryDeserializer deserializer(in);
    SimplePath read;
    ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&read, deserializer));
    EXPECT_TRUE(sameBits(DPoint(0.0, 1.0), locationsOf(read).at(0).first));
}

TEST(PathSerializer, ReadsFormatOneThroughCoordinateReads) {
    ScriptedDeserializer in;
    using S = ScriptedDeserializer;
    in.add(S::String, 0).add(S::Byte, 1).add(S::Byte, 1).add(S::Int, 4);
    double const modes[] = {1, 2, 0, 5};
    for (int i = 0; i < 4; ++i) {
        for (int k = 0; k < 6; ++k) {
            in.add(S::Coordinate, 10 * i + k);
        }
        in.add(S::Byte, modes[i]);
    }
    SimplePath path;
    ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&path, in));
    EXPECT_EQ(in.script.size(), in.next);
    EXPECT_EQ(1, path.isClosedSimplePath());
    auto const triples = locationsOf(path);
    ASSERT_EQ(4u, triples.size());
    EXPECT_EQ(SimplePathLocationTriple({10, 11}, {12, 13}, {14, 15}, SimplePathVertexTriple::Smooth),
              triples[1]);
    // A version-one mode byte of 5 is not a short record: there are none in that format.
    Mode const expected[] = {SimplePathVertexTriple::Symmetric, SimplePathVertexTriple::Smooth,
                             SimplePathVertexTriple::Cusp, SimplePathVertexTriple::Cusp};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(expected[i], triples[static_cast<std::size_t>(i)].mode) << i;
    }
}

TEST(PathSerializer, VertexCodesMapToModesAndRecordLengths) {
    struct Case {
        int code;
        bool shortRecord;
        Mode mode;
    };
    Case const cases[] = {
        {0, false, SimplePathVertexTriple::Cusp},   {1, false, SimplePathVertexTriple::Symmetric},
        {2, false, SimplePathVertexTriple::Smooth}, {3, false, SimplePathVertexTriple::Cusp},
        {4, false, SimplePathVertexTriple::Cusp},   {5, true, SimplePathVertexTriple::Symmetric},
        {6, true, SimplePathVertexTriple::Smooth},  {7, true, SimplePathVertexTriple::Cusp},
        {8, true, SimplePathVertexTriple::Cusp},    {255, true, SimplePathVertexTriple::Cusp},
    };
    for (Case const& c : cases) {
        ScriptedDeserializer in;
        using S = ScriptedDeserializer;
        in.add(S::String, 0).add(S::Byte, 2).add(S::Byte, 0).add(S::Int, 1).add(S::Byte, c.code);
        if (c.shortRecord) {
            in.point(3, 4);
        } else {
            in.point(1, 2).point(3, 4).point(5, 6);
        }
        SimplePath path;
        ASSERT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&path, in)) << c.code;
        EXPECT_EQ(in.script.size(), in.next) << c.code;
        auto const triple = locationsOf(path).at(0);
        EXPECT_EQ(c.mode, triple.mode) << c.code;
        EXPECT_EQ(DPoint(3, 4), triple.anchor);
        EXPECT_EQ(c.shortRecord ? DPoint(3, 4) : DPoint(1, 2), triple.first) << c.code;
        EXPECT_EQ(c.shortRecord ? DPoint(3, 4) : DPoint(5, 6), triple.last) << c.code;
        EXPECT_EQ(0, path.isClosedSimplePath());
    }
}

TEST(PathSerializer, HeaderAndVersionStatuses) {
    using S = ScriptedDeserializer;
    struct Case {
        int headerStatus;
        int versionStatus;
        int version;
        int expected;
        bool allocates;
    };
    // Only 1 and 2 fail in the header; any other status there counts as success.
    Case const cases[] = {
        {2, 0, 2, 2, false}, {1, 0, 2, 1, false}, {0, 2, 2, 2, false}, {0, 1, 2, 1, false},
        {3, -1, 2, 0, true}, {0, 0, 3, 1, false}, {0, 0, 0, 1, false}, {0, 0, 1, 0, true},
    };
    for (Case const& c : cases) {
        S in;
        in.add(S::String, 0, c.headerStatus).add(S::Byte, c.version, c.versionStatus);
        in.add(S::Byte, 0).add(S::Int, 0);
        PHashablePointer<SimplePath> made;
        EXPECT_EQ(c.expected, SimplePathSerializer::readNew(in, made))
            << c.headerStatus << " " << c.versionStatus;
        EXPECT_EQ(c.allocates, made != nullptr);
        delete made.getPointer();
    }
    // read checks its path before touching the stream.
    S untouched;
    untouched.add(S::String, 0);
    EXPECT_EQ(SimplePathSerializer::Failure,
              SimplePathSerializer::read(PHashablePointer<SimplePath>(), untouched));
    EXPECT_EQ(0u, untouched.next);
}

TEST(PathSerializer, BodyFailuresKeepWhatWasRead) {
    using S = ScriptedDeserializer;
    // Status 2 inside the body is an ordinary failure; the closed flag is set before the vertices.
    S in;
    in.add(S::String, 0).add(S::Byte, 2).add(S::Byte, 1).add(S::Int, 3);
    in.add(S::Byte, 7).point(1, 1).add(S::Byte, 7).add(S::Double, 2).add(S::Double, 2, 2);
    SimplePath path;
    EXPECT_EQ(SimplePathSerializer::Failure, SimplePathSerializer::read(&path, in));
    EXPECT_EQ(1, path.numTriples());
    EXPECT_EQ(1, path.isClosedSimplePath());

    // Reading appends to what the path already holds, and a closed byte other than 1 leaves the
    // flag alone.
    S more;
    more.add(S::String, 0).add(S::Byte, 2).add(S::Byte, 0).add(S::Int, 1).add(S::Byte, 6).point(9, 9);
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&path, more));
    EXPECT_EQ(2, path.numTriples());
    EXPECT_EQ(1, path.isClosedSimplePath());

    S negative;
    negative.add(S::String, 0).add(S::Byte, 2).add(S::Byte, 0).add(S::Int, -5).add(S::Byte, 7).point(1, 1);
    SimplePath none;
    EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&none, negative));
    EXPECT_EQ(0, none.numTriples());
    EXPECT_EQ(4u, negative.next) << "a negative count reads no record";
}

TEST(PathSerializer, EveryTruncationFailsAndKeepsTheWholeRecords) {
    SimplePath path;
    addTriple(path, {0, 1}, {1, 1}, {2, 1}, SimplePathVertexTriple::Smooth);
    addTriple(path, {5, 5}, {5, 5}, {5, 5}, SimplePathVertexTriple::Cusp);
    addTriple(path, {7, 7}, {8, 8}, {9, 9}, SimplePathVertexTriple::Symmetric);
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
        int whole = 0;
        for (std::size_t end : recordEnds) {
            whole += length >= end ? 1 : 0;
        }
        EXPECT_EQ(length < 5, read == nullptr) << length;
        if (read != nullptr) {
            EXPECT_EQ(whole, read->numTriples()) << length;
            EXPECT_EQ(length > 5 ? 1 : 0, read->isClosedSimplePath()) << length;
        }
        delete read.getPointer();
    }
}

TEST(PathSerializer, HugeCountFailsFastWithoutReserving) {
    std::ostringstream out;
    BinarySerializer writer(out);
    writer.writeString(PString());
    writer.writeByte(2);
    writer.writeByte(0);
    writer.writeInt(std::numeric_limits<std::int32_t>::max());
    for (int i = 0; i < 2; ++i) {
        writer.writeByte(7);
        writer.writeDouble(i);
        writer.writeDouble(i);
    }
    writer.writeByte(2);
    writer.writeDouble(1.0);
    std::istringstream in(out.str());
    BinaryDeserializer deserializer(in);
    PHashablePointer<SimplePath> read;
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(SimplePathSerializer::Failure, SimplePathSerializer::readNew(deserializer, read));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
    ASSERT_NE(nullptr, read);
    EXPECT_EQ(2, read->numTriples());
    delete read.getPointer();
}

TEST(PathSerializer, FuzzSeedsAreValidStreamsOfBothFormats) {
    char const* const root = std::getenv("SIMPLEPATH_SOURCE_DIR");
    if (root == nullptr) {
        GTEST_SKIP() << "SIMPLEPATH_SOURCE_DIR is not set";
    }
    auto const load = [&](char const* name) {
        std::ifstream file(std::string(root) + "/tests/fuzz/corpus/fuzz_spath_read/" + name,
                           std::ios::binary);
        EXPECT_TRUE(file.good()) << name;
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    char const* const seeds[] = {"v1_open", "v1_closed", "v2_empty", "v2_single_retracted",
                                 "v2_closed_mixed"};
    for (char const* name : seeds) {
        std::istringstream in(load(name));
        BinaryDeserializer deserializer(in);
        SimplePath path;
        EXPECT_EQ(SimplePathSerializer::Success, SimplePathSerializer::read(&path, deserializer)) << name;
        EXPECT_EQ(EOF, in.peek()) << name;
    }
    SimplePath single;
    addTriple(single, {1, 2}, {1, 2}, {1, 2}, SimplePathVertexTriple::Cusp);
    EXPECT_EQ(load("v2_single_retracted"), bytesOf(single));
}
