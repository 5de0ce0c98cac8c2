#include "tests/Platform/Linux/SampleApplications.h"

#include "tests/Platform/Linux/TemporaryDirectory.h"

#include <memory>

namespace korvane::platform {
namespace {

std::unique_ptr<TemporaryDirectory> root;

void addProgram(const std::string &name)
{
    const auto file = sampleRoot() / "bin" / name;
    writeFile(file, "#!/bin/sh\n{ printf '%s' \"" + name + "\"; printf '|%s' \"$@\"; printf '|id=%s\\n' "
                        + "\"$DESKTOP_STARTUP_ID\"; } >> '" + sampleLog().string() + "'\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

void addEntry(const std::string &identifier, const std::string &name, const std::string &exec, const std::string &rest)
{
    writeFile(sampleEntry(identifier),
              "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec + "\n" + rest);
}

}  // namespace

std::filesystem::path sampleRoot()
{
    return root->path();
}

std::filesystem::path sampleEntry(const std::string &identifier)
{
    return sampleRoot() / "share" / "applications" / (identifier + ".desktop");
}

std::filesystem::path sampleLog()
{
    return sampleRoot() / "starts.log";
}

void installSampleApplications()
{
    root = std::make_unique<TemporaryDirectory>();
    const std::string base = sampleRoot().string();
    ::setenv("HOME", base.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (base + "/config").c_str(), 1);
    ::setenv("XDG_DATA_HOME", (base + "/data").c_str(), 1);
    ::setenv("XDG_DATA_DIRS", (base + "/share").c_str(), 1);
    ::setenv("XDG_CURRENT_DESKTOP", "", 1);
    ::setenv("LC_ALL", "C.UTF-8", 1);
    ::setenv("PATH", (base + "/bin:/usr/bin:/bin").c_str(), 1);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::unsetenv("DISPLAY");

    for (const char *program :
         {"filer", "web-viewer", "scribble", "quiet-term", "aaa-term", "adder", "sheets", "snake"})
        addProgram(program);
    addEntry("org.example.Filer", "Files", "filer %U",
             "Icon=folder\nMimeType=inode/directory;\nCategories=System;FileManager;\n");
    addEntry("web-viewer", "Web Viewer", "web-viewer %u",
             "StartupWMClass=Viewer-Class\nStartupNotify=true\nCategories=Network;WebBrowser;\n"
             "MimeType=x-scheme-handler/http;x-scheme-handler/https;text/html;\n");
    addEntry("org.example.Scribble", "Scribble", "scribble %F",
             "StartupNotify=true\nMimeType=text/plain;\nIcon=scribble\n");
    addEntry("org.example.OtherText", "Other Text", "scribble --other %F", "MimeType=text/plain;\n");
    addEntry("quiet-term", "Quiet Terminal", base + "/bin/quiet-term", "Categories=System;TerminalEmulator;\n");
    addEntry("aaa-term", "Another Terminal", "aaa-term", "Categories=System;TerminalEmulator;\n");
    addEntry("galculator", "Adder", "env MODE=x adder", "Categories=Utility;\n");
    addEntry("sheets-startcenter", "Sheets", "sheets", "NoDisplay=true\n");
    addEntry("sheets-calc", "Sheets Calc", "sheets --calc %U", "StartupWMClass=sheets-calc\n");
    addEntry("snake", "Snake", "python3 /opt/snake.py", "");
    addEntry("org.example.Hidden", "Hidden", "adder", "Hidden=true\n");
    std::filesystem::create_symlink(base + "/bin/quiet-term", base + "/bin/x-terminal-emulator");
    writeFile(base + "/share/applications/mimeinfo.cache",
              "[MIME Cache]\ninode/directory=org.example.Filer.desktop;\ntext/plain=org.example.OtherText.desktop;"
              "org.example.Scribble.desktop;\nx-scheme-handler/http=web-viewer.desktop;\n"
              "x-scheme-handler/https=web-viewer.desktop;\ntext/html=web-viewer.desktop;\n");
    writeFile(base + "/config/mimeapps.list", "[Default Applications]\ntext/plain=org.example.Scribble.desktop\n");
}

}  // namespace korvane::platform
