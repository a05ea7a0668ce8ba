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

TEST(Startup, Windows98AndMeTurnXpMenusOffAndHelpRequests) {
    for (const auto& [code, l65] : {std::pair{"98", "0"}, {"ME", "0"}, {"XP", "1"}}) {
        SettingsStore s;
        s.SetText("L65", "1");
        ApplyOsOverrides(s, code);
        EXPECT_EQ(s.Text("L65"), l65) << code;
    }
    for (const char* t : {"?", "/?", "-?"}) EXPECT_TRUE(IsHelpRequest(t)) << t;
    for (const char* t : {"", "? ", "help", "/h", "set"}) EXPECT_FALSE(IsHelpRequest(t)) << t;
    const std::string help = HelpText("0.1.0");
    EXPECT_EQ(help.substr(0, help.find('\n')), "版本：0.1.0");
    EXPECT_EQ(std::count(help.begin(), help.end(), '\n'), 11);
}

TEST(Startup, CommandTailIsEverythingAfterTheProgramName) {
    const std::pair<const char*, const char*> cases[] = {
        {"Lumora.exe", ""},
        {"\"C:\\Program Files\\Lumora\\Lumora.exe\" D:\\a b.mp3", "D:\\a b.mp3"},
        {"\"C:\\P F\\Lumora.exe\"  \"D:\\a b.mp3\"", "\"D:\\a b.mp3\""},
        {"C:\\Lumora\\Lumora.exe   set", "set"},
        {"Lumora.exe /?", "/?"},
        {"\"unclosed quote", ""},
    };
    for (const auto& [line, tail] : cases) EXPECT_EQ(CommandTail(line), tail) << line;
}

class FakeLookup : public PathLookup {
public:
    std::optional<std::string> NameOnDisk(const std::string& path) override {
        std::string key = path;
        for (auto& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        const auto it = onDisk.find(key);
        if (it == onDisk.end()) return std::nullopt;
        return it->second;
    }
    std::map<std::string, std::string> onDisk;  // lower-cased (or short) form -> name on disk
};

TEST(Startup, PathRebuildingGivesTheNameOnDisk) {
    FakeLookup lookup;
    lookup.onDisk["d:\\music\\song.mp3"] = "D:\\Music\\Song.mp3";
    lookup.onDisk["d:\\progra~1\\a.mp3"] = "D:\\Program Files\\a.mp3";
    EXPECT_EQ(RebuildPath("D:\\Music\\Song.mp3", lookup), "D:\\Music\\Song.mp3");  // unchanged
    EXPECT_EQ(RebuildPath("d:\\MUSIC\\song.MP3", lookup), "D:\\Music\\Song.mp3");
    EXPECT_EQ(RebuildPath("D:\\PROGRA~1\\a.mp3", lookup), "D:\\Program Files\\a.mp3");
    EXPECT_EQ(RebuildPath("\"D:\\Music\\Song.mp3\"", lookup), "\"D:\\Music\\Song.mp3\"");  // for the open step
    EXPECT_EQ(RebuildPath("set", lookup), "set");
    EXPECT_EQ(RebuildPath("", lookup), "");
}

TEST(Startup, TooltipRegistrationJoinsTheFolderWithOneBackslash) {
    for (const char* folder : {"D:\\", "D:"}) {
        bool found = false;
        for (const auto& e : TooltipRegistration(folder)) found = found || e.value == "D:\\Tooltip.dll";
        EXPECT_TRUE(found) << folder;
    }
}

struct StartupFixture {
    FakeFileSystem fs;
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper wrapper{reg, prompts};
    IniFiles ini{fs};
    FakeLookup lookup;
    struct Probe : InstanceProbe {
        bool running = false;
        bool AnotherInstanceRuns() override { return running; }
    } probe;

    StartupFixture() { fs.files["C:\\Lumora\\tooltip.dll"] = "MZ"; }
    StartupResult Run(std::string_view tail) {
        return RunStartup({fs, ini, wrapper, probe, lookup}, {OsPlatform::NT, 5, 1}, tail, "C:\\Lumora",
                          [] { ++pumps; });
    }
    static inline int pumps = 0;
    void StoreL44(const std::string& v) {
        reg.Put(RegistryRoot::LocalMachine, "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", "L44",
                {RegistryValue::Kind::Binary, v});
    }
};

TEST(StartupRun, NormalStartClearsTheSlotAndRegistersTheComponent) {
    StartupFixture f;
    WriteScratchValue(f.ini, "D:\\stale.mp3");
    const StartupResult r = f.Run("");
    EXPECT_EQ(r.outcome, StartupOutcome::OpenMainWindow);
    EXPECT_EQ(ReadScratchValue(f.ini), "");
    EXPECT_FALSE(r.showMainWindowNow);
    ASSERT_TRUE(r.os.has_value());
    EXPECT_EQ(r.os->code, "XP");
    const std::vector<std::string> markers = {"操作系统识别初始化", "操作系统识别", "读l44注册表",
                                              "程序是否单一运行", "程序是否单一运行-3", "程序是否单一运行-4",
                                              "严正参数", "第一初始化完毕"};
    EXPECT_EQ(r.markers, markers);
    EXPECT_GE(StartupFixture::pumps, 2);  // the splash keeps answering between the steps
    const RegistryValue* v = f.reg.Find(RegistryRoot::ClassesRoot, "CLSID\\{F2E3C6F5-2F8F-41F9-BDA5-8E19A020CA7E}"
                                                                   "\\InprocServer32", "");
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->kind, RegistryValue::Kind::Text);
    EXPECT_EQ(v->data, "C:\\Lumora\\Tooltip.dll");
    EXPECT_TRUE(f.prompts.messages.empty());
}

TEST(StartupRun, ArgumentShowsTheMainWindowAtOnce) {
    StartupFixture f;
    f.lookup.onDisk["d:\\a.mp3"] = "D:\\A.mp3";
    const StartupResult r = f.Run("d:\\a.mp3");
    EXPECT_EQ(r.outcome, StartupOutcome::OpenMainWindow);
    EXPECT_TRUE(r.showMainWindowNow);
    EXPECT_EQ(r.argument, "D:\\A.mp3");
    EXPECT_FALSE(r.settingsMode);
    EXPECT_TRUE(f.Run("set").settingsMode);
    EXPECT_EQ(f.Run("set").argument, "set");
}

TEST(StartupRun, HelpEndsBeforeAnyInstanceCheck) {
    StartupFixture f;
    f.probe.running = true;
    WriteScratchValue(f.ini, "keep");
    const StartupResult r = f.Run("/?");
    EXPECT_EQ(r.outcome, StartupOutcome::ShowHelp);
    EXPECT_EQ(ReadScratchValue(f.ini), "keep");
}

TEST(StartupRun, SecondInstanceHandsItsArgumentOver) {
    struct Case {
        const char* l44;  // "(missing)" stores nothing
        const char* tail;
        StartupOutcome outcome;
        const char* slot;
    } cases[] = {
        {"1", "", StartupOutcome::HandedOver, "*"},
        // The quoted text is written as it stands; like every private-profile reader, the
        // running instance reads it back without the surrounding quotation marks.
        {"1", "\"D:\\My Music\\a.mp3\"", StartupOutcome::HandedOver, "D:\\My Music\\a.mp3"},
        {"(missing)", "", StartupOutcome::HandedOver, "*"},
        {"yes", "", StartupOutcome::HandedOver, "*"},  // anything but "0" means one instance
        {" 0 ", "", StartupOutcome::OpenMainWindow, ""},
        {"0", "D:\\a.mp3", StartupOutcome::OpenMainWindow, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.l44) + " / " + c.tail);
        StartupFixture f;
        f.probe.running = true;
        if (std::string(c.l44) != "(missing)") f.StoreL44(c.l44);
        WriteScratchValue(f.ini, "D:\\stale.mp3");
        const StartupResult r = f.Run(c.tail);
        EXPECT_EQ(r.outcome, c.outcome);
        EXPECT_EQ(ReadScratchValue(f.ini), c.slot);
        if (r.outcome == StartupOutcome::HandedOver && std::string(c.tail).size() > 0) {
            EXPECT_NE(f.fs.files["C:\\WINDOWS\\tavrinplay.ini"].find(c.tail), std::string::npos);
        }
    }
}

TEST(StartupRun, MissingTooltipComponentStopsWithTheMarker) {
    StartupFixture f;
    f.fs.files.clear();
    const StartupResult r = f.Run("");
    EXPECT_EQ(r.outcome, StartupOutcome::TooltipMissing);
    const std::string text = StartupErrorText(kTooltipMissingText, r.marker);
    EXPECT_EQ(text.substr(0, kTooltipMissingText.size()), kTooltipMissingText);
    EXPECT_EQ(text.substr(text.rfind('\n') + 1), "程序运行到：操作系统识别");
    EXPECT_TRUE(f.reg.keys.empty());
}

TEST(StartupRun, LimitedUserRegistersTheComponentForHimself) {
    StartupFixture f;
    struct DenyClassesRoot : FakeRegistry {
        long CreateKey(RegistryRoot root, const std::string& subKey) override {
            return root == RegistryRoot::ClassesRoot ? regerr::kAccessDenied : FakeRegistry::CreateKey(root, subKey);
        }
    } reg;
    RegistryWrapper wrapper(reg, f.prompts);
    RegisterTooltip(wrapper, "C:\\Lumora");
    EXPECT_NE(reg.Find(RegistryRoot::CurrentUser, "Software\\Classes\\TT.Tooltip", ""), nullptr);
    EXPECT_TRUE(f.prompts.messages.empty());
}

TEST(HandOff, PollTable) {
    struct Case {
        const char* slot;
        const char* l44;
        const char* l66;
        std::optional<std::string> open;
        bool front;
        const char* slotAfter;
    } cases[] = {
        {"", "1", "0", std::nullopt, false, ""},
        {"*", "1", "0", std::nullopt, true, ""},
        {"D:\\a.mp3", "1", "0", std::string("D:\\a.mp3"), false, ""},
        {"D:\\a.mp3", "1", "1", std::string("D:\\a.mp3"), true, ""},
        {"D:\\a.mp3", "0", "1", std::nullopt, false, "D:\\a.mp3"},  // not ours to take
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.slot) + " L44=" + c.l44 + " L66=" + c.l66);
        FakeFileSystem fs;
        IniFiles ini(fs);
        WriteScratchValue(ini, c.slot);
        SettingsStore s;
        s.SetText("L44", c.l44);
        s.SetText("L66", c.l66);
        const HandOffAction a = PollHandOff(ini, s);
        EXPECT_EQ(a.open, c.open);
        EXPECT_EQ(a.bringToFront, c.front);
        EXPECT_EQ(ReadScratchValue(ini), c.slotAfter);
    }
}

TEST(OpenArgument, TrimsAndStripsQuotesOnlyWhenNeeded) {
    FakeFileSystem fs;
    fs.files["D:\\My Music\\a.mp3"] = "";
    fs.files["D:\\\"odd\".mp3"] = "";
    fs.folders.push_back("E:\\");
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"  D:\\My Music\\a.mp3 ", "D:\\My Music\\a.mp3"},
        {"\"D:\\My Music\\a.mp3\"", "D:\\My Music\\a.mp3"},
        {"D:\\\"odd\".mp3", "D:\\\"odd\".mp3"},  // exists as written: kept
        {"E:\\", "E:\\"},
        {"D:\\My Music", "D:\\My Music"},
        {"D:\\nothing.mp3", std::nullopt},
        {"\"", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [arg, want] : cases) EXPECT_EQ(ResolveArgument(arg, fs), want) << arg;
}

TEST(OpenArgument, PendingDropListRoundTrips) {
    EXPECT_EQ(MakePendingDropList({"D:\\a.mp3"}), "aaa*D:\\a.mp3");
    EXPECT_EQ(MakePendingDropList({"D:\\a.mp3", "E:\\"}), "aaa*D:\\a.mp3*E:\\");
    EXPECT_EQ(ParsePendingDropList("aaa*D:\\a.mp3*E:\\"), (std::vector<std::string>{"D:\\a.mp3", "E:\\"}));
    EXPECT_TRUE(ParsePendingDropList("aaa").empty());
    EXPECT_TRUE(ParsePendingDropList("").empty());
}

}  // namespace
}  // namespace lumora
