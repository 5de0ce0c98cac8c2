#include "tests/vectors/driver/Areas.h"

#include "tests/vectors/driver/Comparison.h"
#include "tests/vectors/driver/Scenario.h"

namespace korvane::vectors {
namespace {

CaseRunner functionRunner(const Functions &functions)
{
    return [&functions](const Json &testCase, const Json &) {
        const std::string name = testCase.at("function");
        const auto function = functions.find(name);
        if (function == functions.end())
            return Outcome::skip("no function " + name);
        return compared(testCase.at("expected"), function->second(testCase.at("arguments")));
    };
}

}  // namespace

CaseRunner runnerOf(std::string_view area, const Json &file)
{
    if (file.contains("initialState"))
        return runScenario;
    if (area == "records")
        return functionRunner(recordFunctions());
    if (area == "colour_strings")
        return functionRunner(colorFunctions());
    if (area == "layout_engine")
        return functionRunner(layoutEngineFunctions());
    if (area == "widths_and_heights")
        return functionRunner(widthFunctions());
    if (area == "buttons_and_tray")
        return [](const Json &testCase, const Json &whole) {
            const bool tray = trayFunctions().contains(testCase.at("function").get<std::string>());
            return functionRunner(tray ? trayFunctions() : buttonFunctions())(testCase, whole);
        };
    if (area == "layout_pass")
        return runLayoutPass;
    if (area == "auto_hide")
        return runAutoHide;
    if (area == "overflow_lock")
        return runOverflowLock;
    if (area == "drag_and_drop")
        return runDragAndDrop;
    if (area == "hover")
        return [](const Json &testCase, const Json &) {
            static const std::map<std::string, Outcome (*)(const Json &)> machines{
                {"overflow", runOverflowHover}, {"hoverList", runHoverList}, {"level", runLevel}};
            const std::string name = testCase.at("machine");
            const auto machine = machines.find(name);
            return machine == machines.end() ? Outcome::skip("no machine " + name) : machine->second(testCase);
        };
    return nullptr;
}

}  // namespace korvane::vectors
