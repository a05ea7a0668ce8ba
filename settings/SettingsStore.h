#pragma once
// All user options of the player, as the decimal texts the registry keeps, validated when
// they are loaded. Readers compare a slot's text or take its number; nothing else is cached.
#include <array>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumora {

class RegistryWrapper;

// Each user keeps his own options: a limited account may not write under HKEY_LOCAL_MACHINE.
// Reads fall back to the same path there (UserFirstRegistry), which Lumora never writes.
inline constexpr std::string_view kPlayerKeyPath = "HKEY_CURRENT_USER\\SOFTWARE\\Tavrinsoft\\TavrinPlayer";
inline constexpr std::string_view kSetupKeyPath = "HKEY_CURRENT_USER\\SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup";
// The keys down to the setup key, parent first, as they are created before a value is written.
inline constexpr std::array<std::string_view, 4> kSetupKeyLevels = {
    "HKEY_CURRENT_USER\\SOFTWARE",
    "HKEY_CURRENT_USER\\SOFTWARE\\Tavrinsoft",
    kPlayerKeyPath,
    kSetupKeyPath,
};

// The screen in twips, against which stored window positions are checked.
struct ScreenExtent {
    long long widthTwips = 0;
    long long heightTwips = 0;
};

// "05" -> 5, "+1" -> 1, " 7" -> nothing (callers trim first), "1.0" -> nothing.
std::optional<long long> ParseDecimal(std::string_view text);

class SettingsStore {
public:
    // Every slot holds its initial content: the defaults, and for the options that have no
    // default of their own the choices written next to them in SettingsStore.cpp.
    SettingsStore();

    // The slot's text; empty for a name the store does not hold.
    const std::string& Text(std::string_view name) const;
    // False (and nothing changed) for a name the store does not hold.
    bool SetText(std::string_view name, std::string_view text);
    std::optional<long long> Number(std::string_view name) const;
    // The check-box test: the slot's number is 1.
    bool IsOn(std::string_view name) const;
    bool Holds(std::string_view name) const;

    // The option names in the order they are written to the registry.
    static std::span<const std::string_view> SavedNames();

    // The numbers an option keeps when it is loaded: a range's ends, 0 and 1 for a flag, a choice's
    // lowest and highest value. Nothing for colours and unchecked texts.
    struct Bounds {
        long long low = 0;
        long long high = 0;
    };
    static std::optional<Bounds> OptionBounds(std::string_view name);

private:
    std::map<std::string, std::string, std::less<>> slots_;
};

// Fills the store from the registry, validating every value. A missing key or value is not
// an error. A registry failure is shown once and abandons the load; the store is then as it was.
bool LoadSettings(SettingsStore& store, RegistryWrapper& registry, ScreenExtent screen);

// The settings dialog's confirmation is the user of this (the dialog is still to come).
// Creates the keys, writes "VER", "路径", the empty "TavrinPlayer" value and every option.
// Numbers are written in their plain form ("05" as "5"). Stops at the first failure (shown).
bool SaveSettings(const SettingsStore& store, RegistryWrapper& registry, std::string_view versionText,
                  std::string_view programFolder);

// A value that a window changes on its own and keeps at once (the main window's "倒制" button, the time
// label's mode): into the store and, alone, into the setup key, the keys created first. The store changes
// only for a name it holds, and only once the registry took the value; false otherwise (a registry
// failure is shown).
bool WriteOptionNow(SettingsStore& store, RegistryWrapper& registry, std::string_view name, std::string_view text);

}  // namespace lumora
