#include "simplepath/interfaces/BinaryDeserializer.h"

#include <cstring>
#include <istream>
#include <string>

namespace {
// Strings grow by at most this much before the bytes behind it have been seen in the stream.
constexpr std::size_t stringChunk = 64 * 1024;
} // namespace

int BinaryDeserializer::readBytes(unsigned char* bytes, std::size_t count) {
    try {
        if (!in_.good()) {
            return 1;
        }
        // Straight from the stream buffer: a path is read a few bytes at a time, and going through
        // istream::read would build a sentry for every number. A short read marks the stream as
        // istream::read does, so that every later read fails too.
        std::streambuf* const buffer = in_.rdbuf();
        if (buffer == nullptr) {
            in_.setstate(std::ios::badbit);
            return 1;
        }
        auto const wanted = static_cast<std::streamsize>(count);
        if (buffer->sgetn(reinterpret_cast<char*>(bytes), wanted) != wanted) {
            in_.setstate(std::ios::eofbit | std::ios::failbit);
            return 1;
        }
        return 0;
    } catch (...) {
        return 1;
    }
}

int BinaryDeserializer::readInt(std::int32_t& value) {
    unsigned char bytes[4];
    if (readBytes(bytes, 4) != 0) {
        return 1;
    }
    std::uint32_t const bits = std::uint32_t(bytes[0]) | (std::uint32_t(bytes[1]) << 8) |
                               (std::uint32_t(bytes[2]) << 16) | (std::uint32_t(bytes[3]) << 24);
    value = static_cast<std::int32_t>(bits);
    return 0;
}

int BinaryDeserializer::readDouble(double& value) {
    unsigned char bytes[8];
    if (readBytes(bytes, 8) != 0) {
        return 1;
    }
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) {
        bits |= std::uint64_t(bytes[i]) << (8 * i);
    }
    std::memcpy(&value, &bits, sizeof value);
    return 0;
}

int BinaryDeserializer::readCoordinate(double& value) {
    return readDouble(value);
}

int BinaryDeserializer::readByte(std::uint8_t& value) {
    return readBytes(&value, 1);
}

int BinaryDeserializer::readString(PString& value) {
    std::int32_t length = 0;
    if (readInt(length) != 0 || length < 0) {
        return 1;
    }
    try {
        std::string text;
        auto remaining = static_cast<std::size_t>(length);
        while (remaining > 0) {
            std::size_t const chunk = remaining < stringChunk ? remaining : stringChunk;
            std::size_t const old = text.size();
            text.resize(old + chunk);
            if (readBytes(reinterpret_cast<unsigned char*>(&text[old]), chunk) != 0) {
                return 1;
            }
            remaining -= chunk;
        }
        value = PString(std::move(text));
        return 0;
    } catch (...) {
        return 1;
    }
}
