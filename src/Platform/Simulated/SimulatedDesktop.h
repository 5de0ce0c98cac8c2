// A whole desktop in memory with virtual time, for tests, cases and benchmarks. Nothing changes by itself: a test sets
// it up through the parts below, lets time pass with loop.advance(), and checks in `actions` what the core asked for.
//
//     SimulatedDesktop desktop;
//     desktop.applications.put({.application = {.pid = 7, .localizedName = "Mail"}, .windows = {{{.hash = 1}}}});
//     auto platform = desktop.platform();
#pragma once

#include "Platform/Icu/IcuText.h"
#include "Platform/Simulated/ActionLog.h"
#include "Platform/Simulated/MemoryDefaults.h"
#include "Platform/Simulated/SimulatedAccessibility.h"
#include "Platform/Simulated/SimulatedApplications.h"
#include "Platform/Simulated/SimulatedSurroundings.h"
#include "Platform/Simulated/VirtualLoop.h"
#include "Ports/Platform.h"

namespace korvane::platform::simulated {

class SimulatedDesktop {
public:
    explicit SimulatedDesktop(Behaviour behaviour = Behaviour::live)
        : applications(behaviour, loop, actions), accessibility(applications, actions), windowList(applications),
          screens(loop), pointer(screens, actions), events(loop), panels(loop), hotKeys(loop),
          launching(applications, actions), audio(loop), dialogs(actions)
    {}
    SimulatedDesktop(const SimulatedDesktop &) = delete;
    SimulatedDesktop &operator=(const SimulatedDesktop &) = delete;

    // The platform holds references to the parts, so the desktop must outlive it.
    platform::Platform platform()
    {
        return {loop,      applications, accessibility, windowList, screens, pointer, events,     panels, hotKeys,
                loginItem, defaults,     launching,     text,       icons,   audio,   brightness, dialogs};
    }

    VirtualLoop loop;
    ActionLog actions;
    SimulatedApplications applications;
    SimulatedAccessibility accessibility;
    SimulatedWindowList windowList;
    SimulatedScreens screens;
    SimulatedPointer pointer;
    SimulatedEvents events;
    SimulatedPanels panels;
    SimulatedHotKeys hotKeys;
    SimulatedLoginItem loginItem;
    MemoryDefaults defaults;
    SimulatedLaunching launching;
    platform::IcuText text;
    SimulatedIcons icons;
    SimulatedAudio audio;
    SimulatedBrightness brightness;
    SimulatedDialogs dialogs;
};

}  // namespace korvane::platform::simulated
