#pragma once

#include "simplepath/interfaces/Deserializer.h"

#include <iosfwd>

// Reads what BinarySerializer writes. A read past the end, a negative or oversized string length or a
// stream error returns status 1 and never throws. Strings are read in bounded chunks, so a hostile
// length costs no more memory than the stream really holds.
class BinaryDeserializer : public Deserializer {
  public:
    explicit BinaryDeserializer(std::istream& in) : in_(in) {}

    int readInt(std::int32_t& value) override;
    int readCoordinate(double& value) override;
    int readDouble(double& value) override;
    int readByte(std::uint8_t& value) override;
    int readString(PString& value) override;

  private:
    int readBytes(unsigned char* bytes, std::size_t count);

    std::istream& in_;
};
