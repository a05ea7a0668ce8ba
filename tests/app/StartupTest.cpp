#include <gtest/gtest.h>

#include <map>

#include "app/Startup.h"
#include "settings/IniFiles.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakeFileSystem;
using test::FakePrompts;
using test::FakeRegistry;

TEST(Startup, Windows98AndMeTurnXpMenusOffHelpRequestsAndTheCommandTail) {
    for (const auto& [code, l65] : {std::pair{"98", "0"}, {"ME", "0"}, {"XP", "1"}}) {
        SettingsStore s;
        s.SetText("L65", "1");
        ApplyOsOverrides(s, code);
        EXPECT_EQ(s.Text("L65"), l65) << code;
    }
    for (const char* t : {"?", "/?", "-?"}) EXPECT_TRUE(IsHelpRequest(t)) << t;
    for (const char* t : {"? ", "help"}) EXPECT_FALSE(IsHelpRequest(t)) << t;
    // The command tail is everything after the program name.
    const std::pair<const char*, const char*> cases[] = {
        {"Lumora.exe", ""}, {"\"C:\\P F\\Lumora.exe\" D:\\a b.mp3", "D:\\a b.mp3"},
        {"\"C:\\P F\\Lumora.exe\"  \"D:\\a b.mp3\"", "\"D:\\a b.mp3\""}, {"C:\\Lumora.exe   set", "set"},
        {"\"unclosed quote", ""},
    };
    for (const auto& [line, tail] : cases) EXPECT_EQ(CommandTail(line), tail) << line;
}

struct StartupFixture {
    FakeFileSystem fs;
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper wrapper{reg, prompts};
    IniFiles ini{fs};
    struct Probe : InstanceProbe {
        bool AnotherInstanceRuns() override { return running; }
        bool running = false;
    } probe;

    StartupFixture() { fs.files["C:\\Lumora\\tooltip.dll"] = "MZ"; }
    StartupResult Run(std::string_view tail) {
        return RunStartup({fs, ini, wrapper, probe}, {OsPlatform::NT, 5, 1}, tail, "C:\\Lumora",
                          [] { ++pumps; });
    }
    static inline int pumps = 0;
};

TEST(StartupRun, NormalStartClearsTheSlotAndRegistersTheComponent) {
    StartupFixture f;
    WriteScratchValue(f.ini, "D:\\stale.mp3");
    const StartupResult r = f.Run("");
    EXPECT_EQ(std::tuple(r.outcome, r.showMainWindowNow, r.os.value().code, ReadScratchValue(f.ini)),
              std::tuple(StartupOutcome::OpenMainWindow, false, std::string("XP"), std::string()));
    EXPECT_EQ(r.markers, (std::vector<std::string>{"操作系统识别初始化", "操作系统识别", "读l44注册表", "程序是否单一运行",
                                                 "程序是否单一运行-3", "程序是否单一运行-4", "严正参数", "第一初始化完毕"}));
    EXPECT_GE(StartupFixture::pumps, 2);  // the splash keeps answering between the steps
    const RegistryValue* v = f.reg.Find(RegistryRoot::ClassesRoot, "CLSID\\{F2E3C6F5-2F8F-41F9-BDA5-8E19A020CA7E}"
                                                                   "\\InprocServer32", "");
    EXPECT_EQ(std::pair(v->kind, v->data), std::pair(RegistryValue::Kind::Text, std::string("C:\\Lumora\\Tooltip.dll")));
}

TEST(StartupRun, ArgumentSettingsModeAndHelp) {
    StartupFixture f;
    f.fs.files["D:\\Music\\Song.MP3"] = "";
    const StartupResult r = f.Run("d:\\music\\song.mp3");  // kept as the user spelled it
    EXPECT_EQ(std::tuple(r.outcome, r.showMainWindowNow, r.argument, r.settingsMode),
              std::tuple(StartupOutcome::OpenMainWindow, true, std::string("d:\\music\\song.mp3"), false));
    EXPECT_TRUE(f.Run("set").settingsMode);
    f.probe.running = true;  // help ends before any instance check
    WriteScratchValue(f.ini, "keep");
    EXPECT_EQ(f.Run("/?").outcome, StartupOutcome::ShowHelp);
    EXPECT_EQ(ReadScratchValue(f.ini), "keep");
}

TEST(StartupRun, SecondInstanceHandsItsArgumentOver) {
    // A quoted argument is written as it stands; like every private-profile reader, the running instance reads
    // it back without the quotation marks. Anything but "0" in L44 (or nothing) means one instance.
    for (const auto& [l44, tail, slot] : {std::tuple{"1", "\"D:\\My Music\\a.mp3\"", "D:\\My Music\\a.mp3"},
                                          {"", "", "*"}, {"yes", "", "*"}, {"0", "D:\\a.mp3", ""}}) {
        StartupFixture f;
        f.probe.running = true;
        if (*l44) f.reg.Put(RegistryRoot::CurrentUser, "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", "L44", {RegistryValue::Kind::Binary, l44});
        WriteScratchValue(f.ini, "D:\\stale.mp3");
        const StartupResult r = f.Run(tail);
        EXPECT_EQ(r.outcome, *slot ? StartupOutcome::HandedOver : StartupOutcome::OpenMainWindow) << l44;
        EXPECT_EQ(ReadScratchValue(f.ini), slot);
    }
}

TEST(HandOff, PollTable) {
    struct Case {
        const char *slot, *l44, *l66;
        std::optional<std::string> open;
        bool front;
        const char* slotAfter;
    } cases[] = {
        {"", "1", "0", std::nullopt, false, ""}, {"*", "1", "0", std::nullopt, true, ""},
        {"D:\\a.mp3", "1", "0", "D:\\a.mp3", false, ""}, {"D:\\a.mp3", "1", "1", "D:\\a.mp3", true, ""},
        {"D:\\a.mp3", "0", "1", std::nullopt, false, "D:\\a.mp3"},  // not ours to take
    };
    for (const auto& c : cases) {
        FakeFileSystem fs;
        IniFiles ini(fs);
        WriteScratchValue(ini, c.slot);
        SettingsStore s;
        s.SetText("L44", c.l44);
        s.SetText("L66", c.l66);
        const HandOffAction a = PollHandOff(ini, s);
        EXPECT_EQ(std::tuple(a.open, a.bringToFront, ReadScratchValue(ini)), std::tuple(c.open, c.front, c.slotAfter)) << c.slot;
    }
}

TEST(OpenArgument, TrimsAndStripsQuotesOnlyWhenNeeded) {
    FakeFileSystem fs;
    fs.files["D:\\My Music\\a.mp3"] = "";
    fs.files["D:\\\"odd\".mp3"] = "";
    fs.folders.push_back("E:\\");
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"  D:\\My Music\\a.mp3 ", "D:\\My Music\\a.mp3"}, {"\"D:\\My Music\\a.mp3\"", "D:\\My Music\\a.mp3"},
        {"D:\\\"odd\".mp3", "D:\\\"odd\".mp3"},  // exists as written: kept
        {"E:\\", "E:\\"}, {"D:\\nothing.mp3", std::nullopt}, {"\"", std::nullopt},
    };
    for (const auto& [arg, want] : cases) EXPECT_EQ(ResolveArgument(arg, fs), want) << arg;
}

}  // namespace
}  // namespace lumora
