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
    double const nan = -NAN;
    EXPECT_EQ(out.writeInt(-2) + out.writeCoordinate(nan) + out.writeString(PString("h\xC3\xA9llo")), 0);
    EXPECT_EQ(bytes.str().substr(0, 4), std::string("\xFE\xFF\xFF\xFF", 4));
    BinaryDeserializer in(bytes);
    std::int32_t i = 0;
    double read = 0.0;
    PString s;
    EXPECT_EQ(in.readInt(i) + in.readCoordinate(read) + in.readString(s), 0);
    EXPECT_TRUE(i == -2 && std::memcmp(&read, &nan, sizeof nan) == 0 && s == PString("h\xC3\xA9llo"));
    EXPECT_EQ(in.readInt(i), 1) << "reading past the end fails";
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
    std::istringstream source("abcd"); // a stream that throws must not throw through the reader
    source.exceptions(std::ios::failbit | std::ios::eofbit);
    double d = 0.0;
    EXPECT_EQ(BinaryDeserializer(source).readDouble(d), 1);
}

} // namespace
