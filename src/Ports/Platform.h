// Everything the core asks of a desktop.
#pragma once

#include "Ports/Accessibility.h"
#include "Ports/Applications.h"
#include "Ports/Audio.h"
#include "Ports/Brightness.h"
#include "Ports/Defaults.h"
#include "Ports/Dialogs.h"
#include "Ports/Events.h"
#include "Ports/HotKeys.h"
#include "Ports/Icons.h"
#include "Ports/Launching.h"
#include "Ports/LoginItem.h"
#include "Ports/MainLoop.h"
#include "Ports/Panels.h"
#include "Ports/Pointer.h"
#include "Ports/Screens.h"
#include "Ports/Text.h"
#include "Ports/WindowList.h"

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
