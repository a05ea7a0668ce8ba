#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "app/HandOff.h"
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
        bool HandOver(std::string_view argument) override { return handed.emplace_back(argument), answers; }
        void PointToSlot() override { pointed = true; }
        bool running = false, answers = false, pointed = false;
        std::vector<std::string> handed;
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
    // Given to the running instance at once; only when it does not answer is the slot written, as it stands:
    // like every private-profile reader, the slot's reader drops the quotation marks. Anything but "0" in L44
    // (or nothing) means one instance.
    for (const auto& [l44, answers, tail, slot] :
         {std::tuple{"1", false, "\"D:\\My Music\\a.mp3\"", "D:\\My Music\\a.mp3"},
          {"", false, "", "*"},
          {"yes", true, "", "D:\\stale.mp3"},
          {"1", true, "D:\\a.mp3", "D:\\stale.mp3"},
          {"0", true, "D:\\a.mp3", ""}}) {
        StartupFixture f;
        f.probe.running = true;
        f.probe.answers = answers;
        if (*l44) f.reg.Put(RegistryRoot::CurrentUser, "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", "L44", {RegistryValue::Kind::Binary, l44});
        WriteScratchValue(f.ini, "D:\\stale.mp3");
        const StartupResult r = f.Run(tail);
        const bool handed = std::string_view(l44) != "0";
        EXPECT_EQ(r.outcome, handed ? StartupOutcome::HandedOver : StartupOutcome::OpenMainWindow) << l44;
        EXPECT_EQ(f.probe.handed, handed ? std::vector<std::string>{*tail ? tail : "*"} : std::vector<std::string>{});
        EXPECT_EQ(ReadScratchValue(f.ini), slot);
        EXPECT_EQ(f.probe.pointed, handed && !answers);
    }
}

// Twenty starts from one Explorer selection: one open, once every start made together has spoken or ended.
TEST(HandOff, StartsMadeTogetherAreOneOpen) {
    SettingsStore s;
    s.SetText("L66", "0");
    HandOffBatch batch;
    std::vector<StartedProcess> running;
    const auto ready = [&](long long now) { return batch.Ready(now, s, running); };
    const auto receive = [&](HandOffKind kind, unsigned long process, long long started, const char* argument,
                             long long now) {
        const std::string bytes = EncodeHandOff({kind, process, started, argument});
        batch.Receive(DecodeHandOff(static_cast<unsigned>(kind), bytes).value(), now);
    };
    // 1 and 2 have spoken; 3 started with them and is still on its way, 9 is a Lumora of long ago.
    running = {{1, 0}, {2, 100}, {3, 250}, {9, -10000}};
    EXPECT_TRUE(HandOffBatch::StartedTogether(-300, running) && !HandOffBatch::StartedTogether(800, running));
    receive(HandOffKind::Argument, 1, 0, "D:\\b.mp3", 300);
    receive(HandOffKind::Argument, 0x87654321, 100, "D:\\a.mp3", 400);
    running[1].id = 0x87654321;
    EXPECT_FALSE(ready(1000));
    running.erase(running.begin() + 2);  // 3 ended without a word
    EXPECT_FALSE(ready(599));            // a start may still come within half a second of the last
    const auto first = ready(600);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->open, (std::vector<std::string>{"D:\\b.mp3", "D:\\a.mp3"}));
    EXPECT_FALSE(first->bringToFront || batch.Collecting());

    // Each start within half a second of another joins, however long the chain; "*" only brings the window
    // back, unless "L66" does so for files too.
    running = {{4, 2450}, {5, 2900}, {6, 3500}};
    receive(HandOffKind::Argument, 7, 2000, "*", 2600);
    EXPECT_FALSE(ready(3200));
    receive(HandOffKind::Argument, 4, 2450, "*", 3250);
    receive(HandOffKind::Withdraw, 5, 2900, "", 3300);  // runs on its own
    EXPECT_FALSE(ready(3399));
    const auto second = ready(3400);  // 6 started too late to belong
    EXPECT_TRUE(second && second->open.empty() && second->bringToFront);
    // A start that never speaks holds a batch up for a while only.
    s.SetText("L66", "1");
    running = {{8, 9900}};
    receive(HandOffKind::Argument, 5, 10000, "D:\\c.mp3", 10000);
    EXPECT_FALSE(ready(14999));
    EXPECT_TRUE(ready(15000).value().bringToFront);
    s.SetText("L44", "0");  // not ours to take
    receive(HandOffKind::Argument, 5, 20000, "D:\\c.mp3", 20000);
    EXPECT_TRUE(ready(21000).value().open.empty());
    // What another program may send: nothing but our kinds, with their fixed fields.
    EXPECT_FALSE(DecodeHandOff(1, std::string(12, 'x')) || DecodeHandOff(2, std::string(11, 'x')));
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
