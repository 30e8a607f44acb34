#include "simplepath/interfaces/BinarySerializer.h"

#include <cstring>
#include <limits>
#include <ostream>

int BinarySerializer::writeBytes(unsigned char const* bytes, std::size_t count) {
    try {
        if (!out_.good()) {
            return 1;
        }
        // Straight into the stream buffer: a path is written a few bytes at a time, and going through
        // ostream::write would build a sentry for every number. A short write marks the stream bad,
        // as ostream::write does.
        std::streambuf* const buffer = out_.rdbuf();
        auto const wanted = static_cast<std::streamsize>(count);
        if (buffer == nullptr || buffer->sputn(reinterpret_cast<char const*>(bytes), wanted) != wanted) {
            out_.setstate(std::ios::badbit);
            return 1;
        }
        return 0;
    } catch (...) {
        return 1;
    }
}

int BinarySerializer::writeInt(std::int32_t value) {
    auto const bits = static_cast<std::uint32_t>(value);
    unsigned char const bytes[4] = {static_cast<unsigned char>(bits), static_cast<unsigned char>(bits >> 8),
                                    static_cast<unsigned char>(bits >> 16),
                                    static_cast<unsigned char>(bits >> 24)};
    return writeBytes(bytes, 4);
}

int BinarySerializer::writeDouble(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    unsigned char bytes[8];
    for (int i = 0; i < 8; ++i) {
        bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
    }
    return writeBytes(bytes, 8);
}

int BinarySerializer::writeCoordinate(double value) {
    return writeDouble(value);
}

int BinarySerializer::writeByte(std::uint8_t value) {
    return writeBytes(&value, 1);
}

int BinarySerializer::writeString(PString const& value) {
    std::string const& text = value.str();
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return 1;
    }
    if (writeInt(static_cast<std::int32_t>(text.size())) != 0) {
        return 1;
    }
    return writeBytes(reinterpret_cast<unsigned char const*>(text.data()), text.size());
}
