#pragma once

#include "simplepath/foundation/PHashablePointer.h"

class Deserializer;
class Serializer;
class SimplePath;

// Writes paths to a host's byte stream and reads them back. Only stream format 2 is written; formats
// 1 and 2 are read.
//
// Format 2, in stream order:
//   string   header, written empty and ignored on reading
//   byte     format version, 2
//   byte     1 if the path is closed, else 0
//   int32    n, the number of vertices
//   n records, first vertex first:
//     byte     vertex code = mode code (Smooth 2, Cusp 3, Symmetric 1), plus 4 when both handles lie
//              exactly on the anchor
//     doubles  anchor x, y when the handles lie on the anchor; otherwise incoming handle x, y,
//              anchor x, y, outgoing handle x, y
// Format 1 has the same closed byte and count, then per vertex six coordinates (incoming handle,
// anchor, outgoing handle) and a mode byte, with no short record for retracted handles.
//
// A vertex whose mode is none of the three known ones is written with the mode code of the vertex
// before it (0 for the first vertex); this is deliberate and keeps the stream unchanged. On reading, a mode
// code of 1 is Symmetric, 2 Smooth and anything else Cusp.
class SimplePathSerializer {
  public:
    // [[nodiscard]]: a result dropped on the floor is a failure nobody sees; a caller that truly does
    // not care casts it to void and says why.
    enum [[nodiscard]] Result{
        Success = 0,
        // A failed write, an unknown format version, or a failed read anywhere after the version byte.
        Failure = 1,
        // The deserializer's own status 2 while reading the header string or the version byte, passed
        // on so that a host can tell its own failure apart.
        HostFailure = 2,
    };

    SimplePathSerializer() = delete;

    // Writes the path in format 2. Success, or Failure at the first write that fails (or for a null
    // path).
    static Result write(PHashablePointer<SimplePath> const& path, Serializer& out);

    // Reads one path and appends its vertices to `path`; the stream of a closed path closes `path`.
    // A failure in the vertex records leaves the vertices read so far in the path: nothing is rolled
    // back.
    //
    // Hostile streams are safe: the vertex count is never trusted for an allocation (storage grows
    // only with records actually read), a negative count reads no vertex, and reading stops at the
    // first failed read, so the work and memory spent are bounded by what the stream really holds.
    // For the header and the version byte only statuses 1 and 2 count as failures and are returned as
    // they are; in the body any non-zero status is a Failure.
    static Result read(PHashablePointer<SimplePath> const& path, Deserializer& in);

    // As read, into a new empty path that it allocates once the version is known to be readable and
    // stores in `path` (the caller owns it and deletes it, whatever the result). When the header or the
    // version fails, or memory is exhausted, `path` is left untouched.
    static Result readNew(Deserializer& in, PHashablePointer<SimplePath>& path);
};
