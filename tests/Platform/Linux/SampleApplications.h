// A small set of installed applications. GIO reads the directories once for each process, so they are put in place
// before the first test and shared by all.
#pragma once

#include <filesystem>
#include <string>

namespace korvane::platform {

// Sets the environment up; to be called before anything uses GIO.
void installSampleApplications();

std::filesystem::path sampleRoot();
std::filesystem::path sampleEntry(const std::string &identifier);
// What the sample programs have written about their starts: one line each, the arguments between bars.
std::filesystem::path sampleLog();

}  // namespace korvane::platform
