#include "simplepath/path/SimplePathSerializer.h"

#include <cstdint>
#include <new>

#include "simplepath/interfaces/Deserializer.h"
#include "simplepath/interfaces/PString.h"
#include "simplepath/interfaces/Serializer.h"
#include "simplepath/path/SimplePath.h"

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;

constexpr std::uint8_t kWrittenVersion = 2;
// Added to a vertex code when both handles sit on the anchor and only the anchor is stored.
constexpr std::uint8_t kRetracted = 4;

DPoint locationOf(SimplePathVertex const* vertex) {
    return vertex != nullptr ? vertex->getLocation() : DPoint();
}

// The stream's mode code, or `previous` for a mode the stream has no code for.
std::uint8_t modeCode(Mode mode, std::uint8_t previous) {
    switch (mode) {
    case SimplePathVertexTriple::Smooth:
        return 2;
    case SimplePathVertexTriple::Cusp:
        return 3;
    case SimplePathVertexTriple::Symmetric:
        return 1;
    }
    return previous;
}

Mode modeOf(std::uint8_t code) {
    switch (code) {
    case 1:
        return SimplePathVertexTriple::Symmetric;
    case 2:
        return SimplePathVertexTriple::Smooth;
    default:
        return SimplePathVertexTriple::Cusp;
    }
}

bool writePoint(Serializer& out, DPoint const& point) {
    return out.writeDouble(point.x) == 0 && out.writeDouble(point.y) == 0;
}

// Header and version reads: only 1 and 2 are failures there; every other status counts as success.
bool isHeaderFailure(int status) {
    return status == 1 || status == 2;
}

bool readPoint(Deserializer& in, DPoint& point) {
    return in.readDouble(point.x) == 0 && in.readDouble(point.y) == 0;
}

bool readCoordinatePoint(Deserializer& in, DPoint& point) {
    return in.readCoordinate(point.x) == 0 && in.readCoordinate(point.y) == 0;
}

bool appendTriple(SimplePath& path, DPoint const& first, DPoint const& anchor, DPoint const& last,
                  Mode mode) {
    SimplePathVertex* firstVertex = nullptr;
    SimplePathVertex* anchorVertex = nullptr;
    SimplePathVertex* lastVertex = nullptr;
    return path.addTriple(first, firstVertex, anchor, anchorVertex, last, lastVertex, mode) ==
           SimplePath::Success;
}

// The closed byte and the vertex count, common to both formats. The count is returned as read: it
// only bounds the loop, it never sizes an allocation.
bool readBodyStart(SimplePath& path, Deserializer& in, std::int32_t& count) {
    std::uint8_t closed = 0;
    if (in.readByte(closed) != 0) {
        return false;
    }
    if (closed == 1) {
        // Closed before any vertex is added, so that a body cut short still leaves a closed path.
        path.setStrictClosed(1);
    }
    return in.readInt(count) == 0;
}

SimplePathSerializer::Result readVersion1Body(SimplePath& path, Deserializer& in) {
    std::int32_t count = 0;
    if (!readBodyStart(path, in, count)) {
        return SimplePathSerializer::Failure;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        DPoint first;
        DPoint anchor;
        DPoint last;
        std::uint8_t code = 0;
        if (!readCoordinatePoint(in, first) || !readCoordinatePoint(in, anchor) ||
            !readCoordinatePoint(in, last) || in.readByte(code) != 0) {
            return SimplePathSerializer::Failure;
        }
        if (!appendTriple(path, first, anchor, last, modeOf(code))) {
            return SimplePathSerializer::Failure;
        }
    }
    return SimplePathSerializer::Success;
}

SimplePathSerializer::Result readVersion2Body(SimplePath& path, Deserializer& in) {
    std::int32_t count = 0;
    if (!readBodyStart(path, in, count)) {
        return SimplePathSerializer::Failure;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        std::uint8_t code = 0;
        if (in.readByte(code) != 0) {
            return SimplePathSerializer::Failure;
        }
        // Only codes above 4 mark a short record: a bare 4 (retracted handles with no mode code, which
        // the writer produces for an unknown mode on the first vertex) is read as a full record.
        bool const retracted = code > kRetracted;
        if (retracted) {
            code = static_cast<std::uint8_t>(code - kRetracted);
        }
        DPoint first;
        DPoint anchor;
        DPoint last;
        if (retracted) {
            if (!readPoint(in, anchor)) {
                return SimplePathSerializer::Failure;
            }
            first = anchor;
            last = anchor;
        } else if (!readPoint(in, first) || !readPoint(in, anchor) || !readPoint(in, last)) {
            return SimplePathSerializer::Failure;
        }
        if (!appendTriple(path, first, anchor, last, modeOf(code))) {
            return SimplePathSerializer::Failure;
        }
    }
    return SimplePathSerializer::Success;
}

// Reads the header string and the version byte. Returns Success with the version, or the result to
// give up with.
SimplePathSerializer::Result readHeader(Deserializer& in, std::uint8_t& version) {
    PString header;
    int status = in.readString(header);
    if (isHeaderFailure(status)) {
        return static_cast<SimplePathSerializer::Result>(status);
    }
    version = 0;
    status = in.readByte(version);
    if (isHeaderFailure(status)) {
        return static_cast<SimplePathSerializer::Result>(status);
    }
    return SimplePathSerializer::Success;
}

bool isReadable(std::uint8_t version) {
    return version == 1 || version == 2;
}

SimplePathSerializer::Result readBody(SimplePath& path, Deserializer& in, std::uint8_t version) {
    switch (version) {
    case 1:
        return readVersion1Body(path, in);
    case 2:
        return readVersion2Body(path, in);
    default:
        return SimplePathSerializer::Failure;
    }
}

} // namespace

SimplePathSerializer::Result SimplePathSerializer::write(PHashablePointer<SimplePath> const& path,
                                                         Serializer& out) {
    if (path == nullptr) {
        return Failure;
    }
    SimplePath const& source = *path;
    if (out.writeString(PString()) != 0 || out.writeByte(kWrittenVersion) != 0 ||
        out.writeByte(source.isClosedSimplePath() != 0 ? 1 : 0) != 0 ||
        out.writeInt(source.numTriples()) != 0) {
        return Failure;
    }
    std::uint8_t code = 0;
    for (SimplePathVertexTriple const& triple : source.getTripleList()) {
        DPoint const first = locationOf(triple.first);
        DPoint const anchor = locationOf(triple.anchor);
        DPoint const last = locationOf(triple.last);
        code = modeCode(triple.mode, code);
        bool const retracted = first == anchor && last == anchor;
        if (out.writeByte(static_cast<std::uint8_t>(retracted ? code + kRetracted : code)) != 0) {
            return Failure;
        }
        bool const written = retracted
                                 ? writePoint(out, anchor)
                                 : writePoint(out, first) && writePoint(out, anchor) && writePoint(out, last);
        if (!written) {
            return Failure;
        }
    }
    return Success;
}

SimplePathSerializer::Result SimplePathSerializer::read(PHashablePointer<SimplePath> const& path,
                                                        Deserializer& in) {
    if (path == nullptr) {
        return Failure;
    }
    std::uint8_t version = 0;
    Result const header = readHeader(in, version);
    if (header != Success) {
        return header;
    }
    return readBody(*path, in, version);
}

SimplePathSerializer::Result SimplePathSerializer::readNew(Deserializer& in,
                                                           PHashablePointer<SimplePath>& path) {
    std::uint8_t version = 0;
    Result const header = readHeader(in, version);
    if (header != Success) {
        return header;
    }
    if (!isReadable(version)) {
        return Failure;
    }
    auto* const made = new (std::nothrow) SimplePath;
    if (made == nullptr) {
        return Failure;
    }
    path = made;
    return readBody(*made, in, version);
}
