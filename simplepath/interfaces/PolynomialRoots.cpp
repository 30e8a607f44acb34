#include "simplepath/interfaces/detail/PolynomialRoots.h"

namespace polyroots {

int quadraticRoots(double c0, double c1, double c2, double lo, double hi, double* out) {
    double r[2];
    int n = 0;
    if (c2 == 0.0) {
        if (c1 != 0.0) {
            r[n++] = -c0 / c1;
        }
    } else {
        double const disc = c1 * c1 - 4.0 * c2 * c0;
        if (disc >= 0.0) {
            double const s = std::sqrt(disc);
            double const q = -0.5 * (c1 < 0.0 ? c1 - s : c1 + s);
            if (q == 0.0) {
                r[n++] = 0.0; // c1 == 0 and c0 == 0: a double root at 0
            } else {
                r[n++] = q / c2;
                r[n++] = c0 / q;
            }
        }
    }
    if (n == 2 && r[1] < r[0]) {
        double const s = r[0];
        r[0] = r[1];
        r[1] = s;
    }
    int count = 0;
    for (int i = 0; i < n; ++i) {
        if (r[i] > lo && r[i] < hi && (count == 0 || out[count - 1] != r[i])) {
            out[count++] = r[i];
        }
    }
    return count;
}

} // namespace polyroots
