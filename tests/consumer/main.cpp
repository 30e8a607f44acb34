// A host that only includes the umbrella header and links the library target.
#include "simplepath/simplepath.h"

#include <cstdio>

int main() {
    DPoint const a(0.0, 0.0);
    DPoint const b(3.0, 4.0);
    std::printf("consumer: distance %.1f\n", distance(a, b));
    return distance(a, b) == 5.0 ? 0 : 1;
}
