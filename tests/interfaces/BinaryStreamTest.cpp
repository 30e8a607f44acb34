#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>

namespace {

TEST(BinaryStream, RoundTripIsBitExactAndLittleEndian) {
    std::stringstream bytes;
    BinarySerializer out(bytes);
    double const values[] = {0.0, -0.0, 1.0 / 3.0, 1e-308, std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
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
    EXPECT_EQ(in.readInt(i), 0);
    EXPECT_EQ(i, -2);
    for (double v : values) {
        double read = 0.0;
        EXPECT_EQ(in.readCoordinate(read), 0);
        EXPECT_EQ(std::memcmp(&read, &v, sizeof v), 0);
    }
    std::uint8_t b = 0;
    EXPECT_EQ(in.readByte(b), 0);
    EXPECT_EQ(b, 0xAB);
    PString s;
    EXPECT_EQ(in.readString(s), 0);
    EXPECT_EQ(s, PString("h\xC3\xA9llo"));
    EXPECT_EQ(in.readByte(b), 1) << "reading past the end fails";
    EXPECT_EQ(in.readInt(i), 1);
}

TEST(BinaryStream, HostileStringLengthsFailWithoutHugeAllocations) {
    // Length 2^31 - 1 followed by six bytes: must fail at once, not reserve two gigabytes.
    std::string raw("\xFF\xFF\xFF\x7F" "abcdef", 10);
    std::istringstream stream(raw);
    BinaryDeserializer in(stream);
    PString s("kept");
    EXPECT_EQ(in.readString(s), 1);
    EXPECT_EQ(s, PString("kept"));

    std::istringstream negative(std::string("\xFF\xFF\xFF\xFF", 4));
    BinaryDeserializer in2(negative);
    EXPECT_EQ(in2.readString(s), 1);

    std::istringstream shortInt(std::string("\x01\x02", 2));
    BinaryDeserializer in3(shortInt);
    std::int32_t i = 0;
    EXPECT_EQ(in3.readInt(i), 1);
}

TEST(BinaryStream, StreamErrorsAreReportedNotThrown) {
    std::ostream sink(nullptr); // no buffer: every write fails
    BinarySerializer out(sink);
    EXPECT_EQ(out.writeInt(1), 1);
    std::istringstream source("abcd");
    source.exceptions(std::ios::failbit | std::ios::eofbit);
    BinaryDeserializer in(source);
    double d = 0.0;
    EXPECT_EQ(in.readDouble(d), 1);
}

} // namespace
