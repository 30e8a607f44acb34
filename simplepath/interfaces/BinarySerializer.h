#pragma once

#include "simplepath/interfaces/Serializer.h"

#include <iosfwd>

// Writes the library's byte layout to a std::ostream: little-endian two's-complement 32-bit integers,
// IEEE 754 binary64 doubles (coordinates too), single bytes, and strings as a 32-bit byte length
// followed by the UTF-8 bytes. A failed stream gives status 1; nothing throws.
class BinarySerializer : public Serializer {
  public:
    explicit BinarySerializer(std::ostream& out) : out_(out) {}

    int writeInt(std::int32_t value) override;
    int writeCoordinate(double value) override;
    int writeDouble(double value) override;
    int writeByte(std::uint8_t value) override;
    int writeString(PString const& value) override;

  private:
    int writeBytes(unsigned char const* bytes, std::size_t count);

    std::ostream& out_;
};
