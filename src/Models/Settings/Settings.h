// The settings in memory. They are read from the defaults database and written to it.
#pragma once

#include "Models/Settings/SettingsTable.h"
#include "Ports/ObserverList.h"

namespace korvane {

class Settings {
public:
    // Reads every key once and migrates the keys of older versions. Values are not clamped: a limit is enforced where
    // the value is used. Seeds the default colours on the first run of an installation.
    explicit Settings(platform::Defaults &defaults);

    const SettingsValues &values() const { return current; }
    // For the operations that change a list and save it themselves.
    SettingsValues &edit() { return current; }

    // Stores the value. For a plain value it also writes the whole group, so that after any assignment the database
    // also has the keys that an older version did not know. Observers are told only when the value is new.
    template <typename T> void assign(T SettingsValues::*member, T value)
    {
        const Setting &setting = settingOf(member);
        const bool isNew = current.*member != value;
        if (isNew)
            current.*member = std::move(value);
        if (setting.savesOnChange)
            save(setting.group);
        if (isNew)
            changed.notify(setting);
    }

    // Writes every key of the group, in the order of the table.
    void save(SettingGroup group);
    // Writes the one key.
    template <typename T> void save(T SettingsValues::*member) { write(settingOf(member)); }
    // Removes the one key from the database; the value in memory stays.
    template <typename T> void forget(T SettingsValues::*member) { defaults.remove(settingOf(member).key); }

    // Removes every stored default colour for good: the colours of the first run do not come back.
    void forgetDefaultColors();

    // assign() has stored a new value and saved its group.
    platform::ObserverList<const Setting &> changed;

private:
    void load();
    void loadMigrated();
    void write(const Setting &setting);

    platform::Defaults &defaults;
    SettingsValues current;
};

}  // namespace korvane
