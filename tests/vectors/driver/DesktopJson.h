// The simulated desktop and its defaults as the files write them.
#pragma once

#include "tests/vectors/driver/Case.h"

#include "Platform/Simulated/SimulatedDesktop.h"

namespace korvane::vectors {

// Puts the described parts in the place of those of the desktop; parts that are not named stay.
void changeDesktop(const Json &parts, platform::simulated::SimulatedDesktop &desktop);

// A value of the defaults, tagged with its type, and back. Data that is JSON is always given as such.
platform::simulated::DefaultsValue defaultsValueFrom(const Json &tagged);
Json jsonOf(const platform::simulated::DefaultsValue &value);
// The way a tagged value comes out of the database again.
Json normalized(const Json &tagged);

Json jsonOf(const platform::simulated::Action &action);

// Tells of the event of that name at once; false for an unknown name.
bool notify(const std::string &name, platform::simulated::SimulatedDesktop &desktop);

}  // namespace korvane::vectors
