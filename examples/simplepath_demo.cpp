// A small host program: builds values with the library's platform layer and containers, stores a few
// records in the library's byte layout and reads them back, printing what it did.
#include "simplepath/simplepath.h"

#include <cstdio>
#include <sstream>

int main(int argc, char** argv) {
    char const* dataDir = argc > 1 ? argv[1] : "examples/data";
    std::printf("simplepath demo (data folder: %s)\n", dataDir);

    P2DTrans turn;
    turn.rotate(3.14159265358979323846 / 2.0).translate(DVector(10.0, 0.0));
    DPoint const p = turn * DPoint(1.0, 0.0);
    std::printf("rotate (1, 0) by 90 degrees, then move by (10, 0): (%.3f, %.3f)\n", p.x, p.y);

    PList<DPoint> ring;
    for (int i = 0; i < 4; ++i) {
        ring.add(DPoint(i, i * i));
    }
    std::printf("a circular list of %ld points; index 5 wraps to (%.0f, %.0f)\n", ring.length(), ring[5].x,
                ring[5].y);

    std::stringstream bytes;
    BinarySerializer out(bytes);
    out.writeInt(static_cast<std::int32_t>(ring.length()));
    for (DPoint const& q : ring) {
        out.writeCoordinate(q.x);
        out.writeCoordinate(q.y);
    }
    out.writeString(PString("outline"));
    BinaryDeserializer in(bytes);
    std::int32_t count = 0;
    in.readInt(count);
    double sum = 0.0;
    for (std::int32_t i = 0; i < count; ++i) {
        double x = 0.0;
        double y = 0.0;
        in.readCoordinate(x);
        in.readCoordinate(y);
        sum += x + y;
    }
    PString name;
    int const status = in.readString(name);
    std::printf("wrote and read back %d points (coordinate sum %.0f) and the name \"%s\" (status %d)\n",
                count, sum, name.c_str(), status);
    return status;
}
