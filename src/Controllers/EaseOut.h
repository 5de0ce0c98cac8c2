// How a change of height runs: quickly at first, slowly at its end.
#pragma once

namespace korvane {

// Converts the part of the time that has passed into the part of the change that is done. Both are from 0 to 1.
double easeOut(double time);

}  // namespace korvane
