#include "Controllers/EaseOut.h"

namespace korvane {
namespace {

// The timing curve is a cubic Bézier curve from (0, 0) to (1, 1) with these control points.
constexpr double x1 = 0, y1 = 0, x2 = 0.58, y2 = 1;

double bezier(double t, double p1, double p2)
{
    const double u = 1 - t;
    return 3 * u * u * t * p1 + 3 * u * t * t * p2 + t * t * t;
}

}  // namespace

double easeOut(double time)
{
    if (time <= 0)
        return 0;
    if (time >= 1)
        return 1;
    // x grows with t, so halving finds it.
    double low = 0, high = 1;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (bezier(middle, x1, x2) < time ? low : high) = middle;
    }
    return bezier(low, y1, y2);
}

}  // namespace korvane
