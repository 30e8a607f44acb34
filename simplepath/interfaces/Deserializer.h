#pragma once

#include "simplepath/interfaces/PString.h"

#include <cstdint>

// Where a path is read from. Implemented by the host (or BinaryDeserializer). Each member returns a
// status: 0 for success; 2 is reserved for hosts that want a failure told apart from a plain one.
class Deserializer {
  public:
    virtual ~Deserializer() = default;
    virtual int readInt(std::int32_t& value) = 0;
    virtual int readCoordinate(double& value) = 0;
    virtual int readDouble(double& value) = 0;
    virtual int readByte(std::uint8_t& value) = 0;
    virtual int readString(PString& value) = 0;
};
