#pragma once

// A rectangle of doubles. The bounds functions of the legacy family fill it as minimum x, minimum y,
// maximum x, maximum y; the view transform reads it as left, top, right, bottom.
struct DRECT {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
};
