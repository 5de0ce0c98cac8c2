// The settings in memory and their way to and from the defaults database.
#pragma once

#include "Models/Settings/SettingsTable.h"
#include "Ports/ObserverList.h"

namespace korvane {

class Settings {
public:
    // Reads every key once, with the migrations of older versions' keys. Nothing is clamped: a limit is enforced where
    // the value is used. Seeds the default colours on the first run of an installation.
    explicit Settings(platform::Defaults &defaults);

    const SettingsValues &values() const { return current; }
    // For the operations that change a list and save it themselves.
    SettingsValues &edit() { return current; }

    // Stores the value and, for a plain one, writes its whole group, so that a key an older version did not know stands
    // there after whatever assignment. Observers are told of a new value only.
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
    // Takes the one key out of the store; the value in memory stays.
    template <typename T> void forget(T SettingsValues::*member) { defaults.remove(settingOf(member).key); }

    // Takes every stored default colour back, for good: the first-run colours do not return.
    void forgetDefaultColors();

    // A new value was stored by assign(), and its group saved.
    platform::ObserverList<const Setting &> changed;

private:
    void load();
    void loadMigrated();
    void write(const Setting &setting);

    platform::Defaults &defaults;
    SettingsValues current;
};

}  // namespace korvane
