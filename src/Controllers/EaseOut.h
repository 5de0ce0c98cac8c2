// The course of a change of height: quick at first, slow at its end.
#pragma once

namespace korvane {

// From the part of the time that has passed to the part of the way that is done; both from 0 to 1.
double easeOut(double time);

}  // namespace korvane
