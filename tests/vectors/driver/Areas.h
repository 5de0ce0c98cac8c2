// Which areas can be run, and by what.
#pragma once

#include "tests/vectors/driver/Case.h"

#include <string_view>

namespace korvane::vectors {

// Null for an area that nothing here can run.
CaseRunner runnerOf(std::string_view area, const Json &file);

// The areas whose cases are single calls of pure functions.
const Functions &recordFunctions();
const Functions &colorFunctions();
const Functions &layoutEngineFunctions();
const Functions &widthFunctions();
const Functions &buttonFunctions();
Outcome runAutoHide(const Json &testCase, const Json &file);
Outcome runOverflowLock(const Json &testCase, const Json &file);
Outcome runDragAndDrop(const Json &testCase, const Json &file);
// A timed machine: the overflow rows of one bar.
Outcome runOverflowHover(const Json &testCase);
Outcome runHoverList(const Json &testCase);
Outcome runLevel(const Json &testCase);
const Functions &trayFunctions();
Outcome runLayoutPass(const Json &testCase, const Json &file);

}  // namespace korvane::vectors
