#include "Areas.h"

#include "Comparison.h"
#include "Scenario.h"

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
        return functionRunner(buttonFunctions());
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
            if (testCase.at("machine") == "overflow")
                return runOverflowHover(testCase);
            return Outcome::skip("no machine " + testCase.at("machine").get<std::string>());
        };
    return nullptr;
}

}  // namespace korvane::vectors
