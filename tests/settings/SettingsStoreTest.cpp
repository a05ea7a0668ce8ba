#include <gtest/gtest.h>

#include <map>

#include "mediainfo/QgcFile.h"
#include "ports/TextCodec.h"
#include "settings/FileRegistry.h"
#include "settings/IniDocument.h"
#include "settings/IniFiles.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "settings/UserFirstRegistry.h"
#include "settings/WindowPlacement.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

const std::string kSetup = "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup";
const std::string kPlayer = "SOFTWARE\\Tavrinsoft\\TavrinPlayer";
constexpr ScreenExtent kScreen{15360, 11520};  // 1024 x 768 at 96 dpi

struct Fixture {
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    UserFirstRegistry user{reg};
    RegistryWrapper wrapper{user, prompts};
    SettingsStore store;

    void Stored(const std::string& name, const std::string& bytes, RegistryRoot root = RegistryRoot::CurrentUser) {
        reg.Put(root, kSetup, name, {RegistryValue::Kind::Binary, bytes});
    }
    std::string Loaded(const std::string& name) {
        EXPECT_TRUE(LoadSettings(store, wrapper, kScreen) && prompts.messages.empty());  // no box for a bad value
        return store.Text(name);
    }
};

// One stored value against what the store holds after loading. "(missing)" stores nothing.
struct LoadCase {
    std::string name, stored, loaded;
};

// clang-format off
const std::vector<LoadCase> kLoadCases = {
    // Ranges: kept inside the closed range, the default outside it.
    {"L1", "0", "5"}, {"L1", "121", "5"}, {"L1", "120", "120"}, {"L1", "1", "1"}, {"L2", "0", "5"}, {"L30", "101", "15"},
    {"L39", "100", "0"}, {"L61", "-9", "-9"}, {"L61", "-10", "0"}, {"L53", "1000", "6"}, {"L46", "20", "0"},
    // Flags: numerically 0 or 1; empty or missing is neither.
    {"L6", "2", "0"}, {"L6", "1", "1"}, {"L13", "(missing)", "1"}, {"L13", "0", "0"}, {"L13", "01", "01"},
    {"L22", "x", "1"},
    // Choices; the check-box array keeps its initial content outside 0 and 1.
    {"L35", "3", "2"}, {"L35", "6", "6"}, {"L35", "7", "2"}, {"L45", "3", "1"}, {"L47", "9", "1"}, {"L72", "-1", "0"},
    // Trimmed before it goes into the store; a terminator left by another tool is dropped.
    {"L1", "  7 ", "7"}, {"L1", std::string("9\0", 2), "9"}, {"Vol", std::string("5\0 \0", 4), "5"},
    // The decoder is not checked at start-up, but must be code page 936 text without control characters.
    {"L25", "7", "7"}, {"L25", "\x8A", "1"}, {"L25", std::string("a\0b", 3), "1"},
    // Colours: a 24-bit colour or a system colour as a signed number.
    {"L34B", "16777215", "16777215"}, {"L34B", "16777216", "14811135"}, {"L34B", "-2147483643", "-2147483643"},
    // Window positions against the screen, in twips.
    {"TOP", "0", ""}, {"TOP", "11519", "11519"}, {"TOP", "11520", ""}, {"LEFT", "0", "0"}, {"LEFT", "-1", ""},
    {"MovTOP", "0", "0"}, {"MovH", "800", ""}, {"MovH", "801", "801"}, {"MovW", "15360", ""}, {"L1F", "red", "0"},
    // The song menu's bounds: the upper one (above 32, below 1000) first, then the lower one below it.
    {"L42", "32", "130"}, {"L42", "999", "999"}, {"L42", "1000", "130"}, {"L41", "999", "32"},
    // Beside the dialog's options.
    {"ListWindowPlace", "1", "1"}, {"ListWindowPlace", "2", "2"}, {"ListWindowPlace", "3", "0"},
    {"LyricsTimingCorrection", "2", "0"},
};
// clang-format on

TEST(Settings, LoadValidatesEachValueAndSaveWritesPlainNumbersAndThePath) {
    for (const auto& c : kLoadCases) {
        SCOPED_TRACE(c.name + " stored as '" + c.stored + "'");
        Fixture f;
        if (c.stored != "(missing)") f.Stored(c.name, c.stored);
        EXPECT_EQ(f.Loaded(c.name), c.loaded);
    }
    {  // A value the user never wrote comes from the machine-wide key; his own wins over it.
        Fixture m;
        for (const char* name : {"L1", "L2"}) m.Stored(name, "9", RegistryRoot::LocalMachine);
        m.Stored("L2", "7");
        EXPECT_EQ(m.Loaded("L1"), "9");
        EXPECT_EQ(m.store.Text("L2"), "7");
    }
    // Saved: numbers in their plain form, the program's path beside the options; positions and volume belong
    // to their windows and are not written here.
    Fixture f;
    for (const auto& [name, text] : {std::pair{"L1", "05"}, {"L61", "-09"}, {"L13", " 1"}, {"L34B", "+255"}}) f.store.SetText(name, text);
    ASSERT_TRUE(SaveSettings(f.store, f.wrapper, "1.0", "C:\\L"));
    std::string written;
    for (const char* name : {"L1", "L61", "L13", "L34B"}) written += f.reg.Find(RegistryRoot::CurrentUser, kSetup, name)->data + " ";
    EXPECT_EQ(written, "5 -9 1 255 ");
    EXPECT_EQ(f.reg.Find(RegistryRoot::CurrentUser, kPlayer, "TavrinPlayer")->data, "");
    EXPECT_EQ(f.reg.Find(RegistryRoot::CurrentUser, kPlayer, "路径")->data, "C:\\L");
    EXPECT_EQ(f.reg.Find(RegistryRoot::CurrentUser, kSetup, "TOP"), nullptr);
    // A window's own option ("倒制", the time label's mode) is kept at once, alone; a refused one is not taken.
    Fixture n;
    ASSERT_TRUE(WriteOptionNow(n.store, n.wrapper, "L55", "1") && n.store.Text("L55") == "1");
    const auto& setup = n.reg.keys.at({RegistryRoot::CurrentUser, kSetup});
    EXPECT_EQ(std::tuple(setup.size(), setup.at("L55").data), std::tuple(size_t{1}, std::string("1")));
    n.reg.failWith = 5;
    EXPECT_FALSE(WriteOptionNow(n.store, n.wrapper, "L58", "1") ||
                 WriteOptionNow(n.store, n.wrapper, "NoSuchOption", "1"));
    EXPECT_EQ(n.store.Text("L58"), "0");
}

TEST(RegistryWrapper, WritesCodePage936BytesAsBinaryReadsEveryTypeAndShowsFailures) {
    Fixture f;
    auto& [reg, prompts, user, w, store] = f;
    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\测试"));
    ASSERT_TRUE(w.WriteValue("HKEY_CURRENT_USER\\测试", "路径", "C:\\播放器"));
    const RegistryValue* v = reg.Find(RegistryRoot::CurrentUser, "测试", "路径");
    EXPECT_EQ(std::pair(v->kind, v->data), std::pair(RegistryValue::Kind::Binary, std::string("C:\\\xB2\xA5\xB7\xC5\xC6\xF7")));
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\测试", "路径"), "C:\\播放器");
    reg.Put(RegistryRoot::CurrentUser, "k", "sz", {RegistryValue::Kind::Text, "音乐"});
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "sz"), "音乐");  // values of other types read as text too
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "L1"), "");      // a missing value reads empty without a box
    reg.log.clear();
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\"));  // a root is never deleted
    EXPECT_TRUE(reg.log.empty());
    // Failures are shown once each, under the title of what failed.
    EXPECT_FALSE(w.WriteValue("HKEY_NOWHERE\\x", "a", "1"));
    reg.failWith = 5;
    EXPECT_FALSE(w.CreateKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a"), "");
    for (const char* path : {"HKLM\\SOFTWARE", "HKEY_LOCAL_MACHINEX"}) EXPECT_FALSE(SplitKeyPath(path)) << path;
    const std::string bad = RegistryErrorText(1010), denied = RegistryErrorText(5);
    const std::string key(kKeyErrorTitle), value(kValueErrorTitle);
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{bad, key}, {bad, value}, {denied, key}, {denied, value}}));
}

// The INI reader and the QGC importer both read as the private-profile functions do: blanks around names and
// values and one pair of quotes go, the first of a duplicated key counts, and only the first section of a name.
TEST(IniDocument, ReadsLikeTheProfileFunctionsWritesOneKeyLeavingEveryOtherByteAloneAndReadsUnicode) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {"  标题 =  \"  kept inside  \"  ", "  kept inside  "}, {"标题=a=b", "a=b"}, {"标题=first\r\n标题=second", "first"},
        {"歌手=x\r\n[媒体信息]\r\n标题=in the second copy of the section", std::nullopt}, {"标题 x=y", std::nullopt},
    };
    for (const auto& [lines, value] : cases) {
        const std::string file = Utf8ToCp936("stray=before\r\n[媒体信息]\r\n" + lines + "\r\n[其他]\r\n标题=other").value();
        EXPECT_EQ(IniDocument(file).Get("媒体信息", "标题"), value) << lines;
        EXPECT_EQ(ParseQgcFile(file).title, value.value_or("")) << lines;
    }
    EXPECT_EQ(IniDocument("[Main]\nKey=v\n").Get("MAIN", "key"), "v");  // ASCII case does not matter
    EXPECT_EQ(IniDocument("[s]\nk=a\x01" + std::string("b\0c\n", 5)).Get("s", "k"), "abc");  // codes 0 and 1 dropped

    // Other programs' sections, comments, odd spacing and bytes that are not code page 936 survive our writes.
    const std::string original = "; comment\r\n[\xCA\xE9\xC7\xA9]\r\n1=C:\\a.mp3*12\r\n\r\n[\xC9\xE8\xD6\xC3]\r\n"
                                 "  \xC1\xD9\xCA\xB1 = old\r\nother=\xFF\xFE odd\r\n";  // 书签, 设置, 临时
    IniDocument doc(original);
    ASSERT_TRUE(doc.Set("设置", "临时", "new"));
    EXPECT_EQ(doc.Get("书签", "1"), "C:\\a.mp3*12");
    std::string expected = original;
    expected.replace(expected.find("  \xC1\xD9\xCA\xB1 = old"), 12, "\xC1\xD9\xCA\xB1=new");
    EXPECT_EQ(doc.Bytes(), expected);

    IniDocument fresh("[a]\r\nx=1\r\n\r\n[b]\r\ny=2\r\n");  // a new key ends its section, a new section the file
    ASSERT_TRUE(fresh.Set("a", "z", "3"));
    ASSERT_TRUE(fresh.Set("c", "w", "4"));
    EXPECT_EQ(fresh.Bytes(), "[a]\r\nx=1\r\nz=3\r\n\r\n[b]\r\ny=2\r\n\r\n[c]\r\nw=4\r\n");
    doc = IniDocument("[s]\r\nk=v\r\n");  // what cannot be written is refused
    for (const auto& [section, key, value] : {std::tuple{"s", "k", "two\r\nlines"}, {"s", "a=b", "v"}, {"s]", "k", "v"},
                                              {"s", "", "v"}, {"s", "k", "\xF0\x9F\x98\x80"}}) {  // the last: not code page 936
        EXPECT_FALSE(doc.Set(section, key, value)) << key << value;
    }
    EXPECT_EQ(doc.Bytes(), "[s]\r\nk=v\r\n");

    std::string utf16 = "\xFF\xFE";
    for (char16_t c : std::u16string(u"[设置]\r\n临时=*\r\n")) utf16 += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    IniDocument unicode(utf16);
    EXPECT_EQ(unicode.Get("设置", "临时"), "*");
    ASSERT_TRUE(unicode.Set("设置", "临时", ""));
    EXPECT_EQ(unicode.Bytes(), "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=\r\n");
}

// The scratch value's round trip is pinned by the start-up tests and, with the real code page, the platform's.
TEST(IniFiles, TheUsersOwnFileTakesOverFromTheWindowsDirectoryAndAnUnreadableOneIsNotOverwritten) {
    test::FakeFileSystem fs;
    IniFiles ini(fs);
    const std::string old = "C:\\WINDOWS\\" + std::string(kPlayerIniFile), mine = ini.PathOf(kPlayerIniFile);
    fs.files[old] = test::Gbk("[书签]\r\n1=keep me\r\n[设置]\r\n临时=old\r\n");
    EXPECT_EQ(ReadScratchValue(ini), "old");
    ASSERT_TRUE(WriteScratchValue(ini, "x"));
    const std::string taken = test::Gbk("[书签]\r\n1=keep me\r\n[设置]\r\n临时=x\r\n");
    EXPECT_EQ(fs.files[mine], taken);
    fs.files[old] = test::Gbk("[设置]\r\n临时=stale\r\n");
    EXPECT_EQ(ReadScratchValue(ini), "x");
    fs.unreadable.push_back(mine);
    EXPECT_FALSE(WriteScratchValue(ini, "y"));
    EXPECT_EQ(fs.files[mine], taken);
    fs.unreadable.clear();
    // The windows' opacity, opaque while switched off and wherever a value is no number of 20 to 255.
    for (const auto& [check, value, alpha] : {std::tuple<const char*, const char*, int>{"1", "20", 20},
                                              {"1", " 255 ", 255},
                                              {"1", "19", 255},
                                              {"1", "256", 255},
                                              {"1", "1000", 255},
                                              {"1", "abc", 255},
                                              {"1", "", 255},
                                              {"0", "200", 255},
                                              {"2", "200", 255}}) {
        ini.Write(std::string(kPlayerIniFile), "透明度", "form_tm_check1", check);
        ini.Write(std::string(kPlayerIniFile), "透明度", "form_tm_2", value);
        const WindowTransparency t = LoadWindowTransparency(ini);
        EXPECT_EQ(t.AlphaOf(TransparentWindow::Lyrics), alpha) << check << "/" << value;
        EXPECT_EQ(t.AlphaOf(TransparentWindow::Main), 255);
    }
    // What the settings page keeps comes back, each value brought into range.
    WindowTransparency kept{true, {19, 128, 300}};
    ASSERT_TRUE(SaveWindowTransparency(ini, kept));
    EXPECT_EQ(ini.Read(std::string(kPlayerIniFile), "透明度", "form_tm_0"), "20");
    EXPECT_EQ(LoadWindowTransparency(ini), (WindowTransparency{true, {20, 128, 255}}));
    fs.unreadable.push_back(mine);
    EXPECT_FALSE(SaveWindowTransparency(ini, {}));
}

const WindowRect kMonitors[] = {{0, 0, 1024, 768}, {1024, 0, 2048, 768}};

// Kept places in twips at the screen's DPI, which come back only on a screen.
TEST(WindowPlacement, KeptPlacesAndTheirValues) {
    const ScreenDpi dpi{96, 120};
    std::map<std::string_view, long long> values = {{"F4L", 1440}, {"F4T", 1440}, {"F4W", 2880}, {"F4H", 1440}};
    const ReadNumber read = [&](std::string_view name) -> std::optional<long long> {
        const auto it = values.find(name);
        return it == values.end() ? std::nullopt : std::optional<long long>(it->second);
    };
    EXPECT_EQ(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors), (WindowRect{96, 120, 288, 240}));

    values["F4L"] = 1440 * 20;  // on the second monitor
    EXPECT_TRUE(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors));
    values["F4L"] = 1440 * 30;  // right of every monitor: moved onto the nearest
    EXPECT_EQ(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors), (WindowRect{1856, 120, 2048, 240}));
    values["F4L"] = 0;
    values["F4H"] = 0;
    EXPECT_FALSE(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors));
    values = {{"F4L", 1440}, {"F4T", 1440}, {"F4W", 0}, {"F4H", 1440}};
    EXPECT_FALSE(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors));

    // The main window keeps its own size.
    values = {{"LEFT", 0}, {"TOP", 0}};
    EXPECT_EQ(KeptPlace(kMainWindowPlace, read, dpi, kMonitors, {5, 5, 465, 305}), (WindowRect{0, 0, 460, 300}));
    values["LEFT"] = -460 * 15;  // ends exactly where the first monitor begins
    EXPECT_EQ(KeptPlace(kMainWindowPlace, read, dpi, kMonitors, {5, 5, 465, 305}), (WindowRect{0, 0, 460, 300}));

    using Values = std::vector<std::pair<std::string_view, std::string>>;
    EXPECT_EQ(PlaceValues(kPlaylistWindowPlace, {96, 48, 288, 144}, {96, 96}),
              (Values{{"F4L", "1440"}, {"F4T", "720"}, {"F4W", "2880"}, {"F4H", "1440"}}));
    EXPECT_EQ(PlaceValues(kMainWindowPlace, {144, 0, 500, 300}, {144, 96}), (Values{{"LEFT", "1440"}, {"TOP", "0"}}));
    EXPECT_EQ(TwipsToPixels(PixelsToTwips(300, 120), 120), 300);
    EXPECT_EQ(PixelsToTwips(96, 0), 1440);  // a screen that tells no DPI counts as 96

    // The list window at start ("ListWindowPlace"): docked right or below, or where it was kept.
    const WindowRect owner{100, 100, 560, 400}, right{560, 100, 1020, 400}, below{100, 400, 560, 700},
        away{100, 100, 109, 109};
    for (const auto& [option, kept, dock] : {std::tuple{1, away, ListDock::Right},
                                             {2, right, ListDock::Below},
                                             {0, away, ListDock::None},
                                             {0, right, ListDock::Right},
                                             {0, below, ListDock::Below}}) {
        EXPECT_EQ(StartListDock(option, kept, owner), dock) << option;
    }
    EXPECT_EQ(StartListDock(0, std::nullopt, owner), ListDock::Right);
    EXPECT_EQ(DockedListPlace(ListDock::Right, owner, below), right);
    EXPECT_EQ(DockedListPlace(ListDock::Below, owner, right), below);
}

// A portable copy keeps its options in a file beside it: the next start (on any machine) loads what this
// one saved, every byte and name intact, and a file that cannot be read or written stays as it was.
TEST(FileRegistry, TheNextStartLoadsWhatWasSavedAndAFileInTroubleIsLeftAlone) {
    test::FakeFileSystem fs;
    test::FakePrompts prompts;
    const std::string file = "E:\\Lumora\\Data\\registry.txt";
    SettingsStore saved;
    saved.SetText("L1", "7");
    saved.SetText("L44", "0");
    const std::string bytes("\0\xFF=]\r\n", 6);
    {
        FileRegistry reg(fs, file);
        RegistryWrapper wrapper(reg, prompts);
        ASSERT_TRUE(SaveSettings(saved, wrapper, "1", "E:\\Lumora"));
        EXPECT_EQ(reg.WriteBinary(RegistryRoot::CurrentUser, kSetup, "a=b", bytes), regerr::kSuccess);
        EXPECT_EQ(reg.CreateKey(RegistryRoot::ClassesRoot, "CLSID\\{x}\\Server"), regerr::kSuccess);
        EXPECT_EQ(reg.WriteText(RegistryRoot::ClassesRoot, "CLSID\\{x}\\Server", "", "E:\\周末.dll"), regerr::kSuccess);
        EXPECT_EQ(reg.WriteText(RegistryRoot::CurrentUser, "SOFTWARE\\None", "v", "x"), regerr::kFileNotFound);
        EXPECT_EQ(reg.WriteText(RegistryRoot::CurrentUser, kSetup, "two\nlines", "x") +
                      reg.CreateKey(RegistryRoot::CurrentUser, "a\nb"),
                  2 * regerr::kInvalidParameter);
        EXPECT_EQ(reg.CreateKey(RegistryRoot::ClassesRoot, "CLSIDS"), regerr::kSuccess);
    }
    FileRegistry next(fs, file);
    RegistryWrapper wrapper(next, prompts);
    SettingsStore loaded;
    ASSERT_TRUE(LoadSettings(loaded, wrapper, kScreen));
    for (auto name : SettingsStore::SavedNames()) EXPECT_EQ(loaded.Text(name), saved.Text(name)) << name;
    RegistryValue value;
    EXPECT_EQ(next.Read(RegistryRoot::CurrentUser, "software\\TAVRINSOFT\\tavrinplayer\\setup", "A=B", value),
              regerr::kSuccess);
    EXPECT_EQ(std::tuple(value.kind, value.data), std::tuple(RegistryValue::Kind::Binary, bytes));
    EXPECT_EQ(next.DeleteValue(RegistryRoot::CurrentUser, kSetup, "A=B"), regerr::kSuccess);
    EXPECT_EQ(next.WriteText(RegistryRoot::CurrentUser, kSetup, "L1", "7"),
              regerr::kSuccess);  // the same bytes as text
    EXPECT_EQ(FileRegistry(fs, file).Read(RegistryRoot::CurrentUser, kSetup, "L1", value) +
                  int(value.kind == RegistryValue::Kind::Text),
              1);
    EXPECT_EQ(FileRegistry(fs, file).Read(RegistryRoot::CurrentUser, kSetup, "a=b", value), regerr::kFileNotFound);
    EXPECT_EQ(next.Read(RegistryRoot::ClassesRoot, "CLSID\\{x}\\Server", "", value), regerr::kSuccess);
    EXPECT_EQ(std::tuple(value.kind, value.data), std::tuple(RegistryValue::Kind::Text, std::string("E:\\周末.dll")));
    // Deleting a key takes the keys below it, even one never made by itself.
    EXPECT_EQ(next.DeleteKey(RegistryRoot::ClassesRoot, "CLSID"), regerr::kSuccess);
    EXPECT_EQ(next.Read(RegistryRoot::ClassesRoot, "CLSID\\{x}\\Server", "", value), regerr::kFileNotFound);
    EXPECT_EQ(next.DeleteKey(RegistryRoot::ClassesRoot, "CLSID"), regerr::kFileNotFound);
    EXPECT_EQ(next.DeleteKey(RegistryRoot::ClassesRoot, "CLSIDS"), regerr::kSuccess);
    // Lines that do not parse are dropped, the rest kept.
    const auto keys = FileRegistry::Parse("junk\n[K]\r\nA=b:4G\r\nB=b:4a\r\nC=x:41\r\nD=b:414\r\nE=t:\r\n");
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(FileRegistry::Format(keys), "[K]\r\nB=b:4A\r\nE=t:\r\n");

    const std::string before = fs.files[file];
    fs.unreadable.push_back(file);
    EXPECT_EQ(next.WriteBinary(RegistryRoot::CurrentUser, kSetup, "L1", "9") +
                  next.DeleteValue(RegistryRoot::CurrentUser, kSetup, "L1"),
              2 * regerr::kAccessDenied);
    fs.unreadable.clear();
    fs.failWrites = true;
    EXPECT_EQ(next.WriteBinary(RegistryRoot::CurrentUser, kSetup, "L1", "9"), regerr::kCantWrite);
    EXPECT_EQ(fs.files[file], before);
    EXPECT_TRUE(prompts.messages.empty());
}

// Every layout length at a window's DPI; a length and its negative (a font's height) scale alike.
TEST(WindowPlacement, LengthsAtADpi) {
    const struct {
        int value, dpi, scaled;
    } cases[] = {{460, 96, 460}, {460, 144, 690}, {460, 192, 920}, {-12, 144, -18}, {5, 144, 8},  {-5, 144, -8},
                 {3, 120, 4},    {1, 120, 1},     {7, 0, 7},       {0, 288, 0},     {26, 168, 46}};
    for (const auto& c : cases) EXPECT_EQ(ScaleForDpi(c.value, c.dpi), c.scaled) << c.value << " at " << c.dpi;
    EXPECT_EQ(ScaleBy(450, 96, 144), 300);  // back to 96 DPI
    EXPECT_EQ(ScaleBy(450, 96, 0), 450);
}

}  // namespace
}  // namespace lumora
