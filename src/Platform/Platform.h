// Everything the core asks of a desktop.
#pragma once

#include "Platform/Accessibility.h"
#include "Platform/Applications.h"
#include "Platform/Audio.h"
#include "Platform/Brightness.h"
#include "Platform/Defaults.h"
#include "Platform/Dialogs.h"
#include "Platform/Events.h"
#include "Platform/HotKeys.h"
#include "Platform/Icons.h"
#include "Platform/Launching.h"
#include "Platform/MainLoop.h"
#include "Platform/Panels.h"
#include "Platform/Screens.h"
#include "Platform/Text.h"
#include "Platform/WindowList.h"

namespace korvane::platform {

struct Platform {
    MainLoop &loop;
    Applications &applications;
    Accessibility &accessibility;
    WindowList &windowList;
    Screens &screens;
    Pointer &pointer;
    Events &events;
    Panels &panels;
    HotKeys &hotKeys;
    LoginItem &loginItem;
    Defaults &defaults;
    Launching &launching;
    Text &text;
    Icons &icons;
    AudioProperties &audio;
    Brightness &brightness;
    Dialogs &dialogs;
};

}  // namespace korvane::platform
