#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sstream>

// The largest single request to operator new in this program, so a test can see what a read reserved.
static std::size_t largestAllocation = 0;

void* operator new(std::size_t size) {
    largestAllocation = std::max(largestAllocation, size);
    if (void* p = std::malloc(size ? size : 1)) {
        return p;
    }
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace {

TEST(BinaryStream, RoundTripIsBitExactAndLittleEndian) {
    std::stringstream bytes;
    BinarySerializer out(bytes);
    double const values[] = {0.0, -0.0, 1.0 / 3.0, 1e-308, INFINITY, NAN};
    EXPECT_EQ(out.writeInt(-2), 0);
    for (double v : values) {
        EXPECT_EQ(out.writeCoordinate(v), 0);
    }
    EXPECT_EQ(out.writeByte(0xAB), 0);
    EXPECT_EQ(out.writeString(PString("h\xC3\xA9llo")), 0);
    std::string const raw = bytes.str();
    EXPECT_EQ(raw.substr(0, 4), std::string("\xFE\xFF\xFF\xFF", 4));

    BinaryDeserializer in(bytes);
    std::int32_t i = 0;
    EXPECT_TRUE(in.readInt(i) == 0 && i == -2);
    for (double v : values) {
        double read = 0.0;
        EXPECT_TRUE(in.readCoordinate(read) == 0 && std::memcmp(&read, &v, sizeof v) == 0) << v;
    }
    std::uint8_t b = 0;
    EXPECT_TRUE(in.readByte(b) == 0 && b == 0xAB);
    PString s;
    EXPECT_TRUE(in.readString(s) == 0 && s == PString("h\xC3\xA9llo"));
    EXPECT_EQ(in.readByte(b), 1) << "reading past the end fails";
    EXPECT_EQ(in.readInt(i), 1);
}

TEST(BinaryStream, HostileLengthsAndBrokenStreamsFailWithoutThrowingOrHugeAllocations) {
    // Length 2^31 - 1 followed by six bytes: must fail without reserving two gigabytes; a negative length
    // fails too, and the string keeps what it held.
    for (std::string raw : {std::string("\xFF\xFF\xFF\x7F"
                                        "abcdef",
                                        10),
                            std::string("\xFF\xFF\xFF\xFF", 4)}) {
        std::istringstream stream(raw);
        PString s("kept");
        largestAllocation = 0;
        EXPECT_EQ(BinaryDeserializer(stream).readString(s), 1);
        EXPECT_LT(largestAllocation, std::size_t(1) << 20);
        EXPECT_EQ(s, PString("kept"));
    }
    std::ostream sink(nullptr); // no buffer: every write fails
    EXPECT_EQ(BinarySerializer(sink).writeInt(1), 1);
    std::istringstream source("abcd");
    source.exceptions(std::ios::failbit | std::ios::eofbit);
    double d = 0.0;
    EXPECT_EQ(BinaryDeserializer(source).readDouble(d), 1);
}

} // namespace
