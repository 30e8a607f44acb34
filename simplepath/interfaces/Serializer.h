#pragma once

#include "simplepath/interfaces/PString.h"

#include <cstdint>

// Where a path is written to. Implemented by the host (or BinarySerializer). Each member returns 0 on
// success.
class Serializer {
  public:
    virtual ~Serializer() = default;
    virtual int writeInt(std::int32_t value) = 0;
    virtual int writeCoordinate(double value) = 0;
    virtual int writeDouble(double value) = 0;
    virtual int writeByte(std::uint8_t value) = 0;
    virtual int writeString(PString const& value) = 0;
};
