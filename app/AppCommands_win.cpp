// The command table: every button and menu entry of the main and playlist windows, with the action
// it runs and the state its menu entry shows. Both windows' menus are built from it.
#include "app/App_win.h"

#include <commctrl.h>
#include <shlwapi.h>

#include <array>
#include <iterator>
#include <utility>

#include "common/SkinDescription.h"

#include "mediainfo/LyricsLookup.h"
#include "ports/FileSystem.h"
#include "settings/OptionNames.h"
#include "ui/ControlIds.h"
#include "ui/InfoEditorDialog_win.h"
#include "ui/LyricsSettingsDialog_win.h"
#include "ui/Prompts_win.h"

namespace lumora {
namespace {

using namespace ids;
using Kind = MenuSlot::Kind;

constexpr std::string_view kAssignLyricsTitle = "指定歌词文件";

// The button or menu entry each key stands for.
constexpr std::pair<KeyCommand, int> kKeyCommands[] = {
    {KeyCommand::PlayPause, IDC_MAIN_PLAY},     {KeyCommand::Stop, IDC_MAIN_STOP},
    {KeyCommand::Previous, IDC_MAIN_PREVIOUS},  {KeyCommand::Next, IDC_MAIN_NEXT},
    {KeyCommand::Back, IDC_MAIN_BACK},          {KeyCommand::Forward, IDC_MAIN_FORWARD},
    {KeyCommand::VolumeUp, IDM_VOLUME_UP},      {KeyCommand::VolumeDown, IDM_VOLUME_DOWN},
    {KeyCommand::OpenFiles, IDM_OPEN_FILES},    {KeyCommand::OpenFolder, IDM_OPEN_FOLDER},
    {KeyCommand::SaveList, IDM_SAVE_LIST},      {KeyCommand::JumpToTime, IDM_JUMP_TO_TIME},
    {KeyCommand::MediaInfo, IDM_MEDIA_INFO},    {KeyCommand::ShowList, IDM_SHOW_PLAYLIST},
    {KeyCommand::PlayEntry, IDM_PLAYLIST_PLAY}, {KeyCommand::RemoveEntry, IDM_PLAYLIST_REMOVE},
    {KeyCommand::FindEntry, IDM_PLAYLIST_FIND}, {KeyCommand::Settings, IDM_SETTINGS},
};

// What has the focus, by its window class: the keys an edit box, a slider or the list needs stay theirs.
KeyFocus FocusOf(HWND focus, bool inPlaylist) {
    wchar_t name[32] = {};
    GetClassNameW(focus, name, static_cast<int>(std::size(name)));
    if (lstrcmpiW(name, L"Edit") == 0 || lstrcmpiW(name, L"ComboBox") == 0 || StrStrIW(name, L"RichEdit")) {
        return KeyFocus::Edit;
    }
    if (inPlaylist) return KeyFocus::List;
    return lstrcmpiW(name, TRACKBAR_CLASSW) == 0 ? KeyFocus::Slider : KeyFocus::Window;
}

constexpr MenuSlot kMainMenu[] = {
    {Kind::Item, IDM_OPEN_FILES},
    {Kind::Item, IDM_OPEN_FOLDER},
    {Kind::Item, IDM_OPEN_LIST},
    {Kind::Item, IDM_SAVE_LIST},
    {Kind::Item, IDM_JUMP_TO_TIME},
    {Kind::Item, IDM_SONG_MENU},
    {Kind::Separator},
    {Kind::Item, IDM_DEFAULT_LIST_SAVE},
    {Kind::Item, IDM_DEFAULT_LIST_DELETE},
    {Kind::Item, IDM_LIBRARY_LOAD},
    {Kind::SubmenuBegin, 0, kAddToLibraryText},
    {Kind::Item, IDM_LIBRARY_ADD_CURRENT},
    {Kind::Item, IDM_LIBRARY_ADD_ALL},
    {Kind::SubmenuEnd},
    {Kind::Item, IDM_LIBRARY_CHANGE},
    {Kind::Item, IDM_LIBRARY_DELETE},
    {Kind::Separator},
    {Kind::Item, IDM_MEDIA_INFO},
    {Kind::Item, IDM_ASSIGN_LYRICS},
    {Kind::Item, IDM_LYRICS_WINDOW},
    {Kind::Item, IDM_LYRICS_SETTINGS},
    {Kind::Item, IDM_SHOW_PLAYLIST},
    {Kind::Separator},
    {Kind::SubmenuBegin, 0, kSkinMenuText},
    {Kind::Item, IDM_SKIN_FIRST},
    {Kind::Item, IDM_SKIN_FIRST + 1},
    {Kind::Item, IDM_SKIN_FIRST + 2},
    {Kind::Item, IDM_SKIN_FIRST + 3},
    {Kind::Item, IDM_SKIN_FIRST + 4},
    {Kind::SubmenuEnd},
    {Kind::Item, IDM_SETTINGS},
    {Kind::Separator},
    {Kind::Item, IDM_EXIT},
};

// The quick button "界面" opens the skins alone.
constexpr MenuSlot kSkinMenu[] = {
    {Kind::Item, IDM_SKIN_FIRST},     {Kind::Item, IDM_SKIN_FIRST + 1}, {Kind::Item, IDM_SKIN_FIRST + 2},
    {Kind::Item, IDM_SKIN_FIRST + 3}, {Kind::Item, IDM_SKIN_FIRST + 4},
};
static_assert(std::size(kSkinMenu) == 5, "one entry for each of SkinChoices()");

// Checked at the skin in use.
template <size_t I>
CommandState CheckedAtSkin(const UiState& ui) {
    return {true, ui.skin == SkinChoices()[I].value};
}
template <size_t... I>
constexpr std::array<StateQuery, sizeof...(I)> SkinStates(std::index_sequence<I...>) {
    return {&CheckedAtSkin<I>...};
}
constexpr auto kSkinStates = SkinStates(std::make_index_sequence<std::size(kSkinMenu)>());
constexpr MenuSlot kTrayMenu[] = {
    {Kind::Item, IDM_TRAY_PLAY_PAUSE}, {Kind::Item, IDM_TRAY_NEXT}, {Kind::Item, IDM_TRAY_PREVIOUS}, {Kind::Separator},
    {Kind::Item, IDM_TRAY_SHOW},       {Kind::Item, IDM_EXIT},
};

constexpr MenuSlot kPlaylistMenu[] = {
    {Kind::Item, IDM_PLAYLIST_PLAY},
    {Kind::Item, IDM_PLAYLIST_REMOVE},
    {Kind::Item, IDM_PLAYLIST_MOVE},
    {Kind::Item, IDM_PLAYLIST_FIND},
};

}  // namespace

void App::BuildCommands() {
    const auto add = [this](std::initializer_list<int> ids, std::string_view text, std::function<void()> action,
                            StateQuery state = AlwaysEnabled) {
        for (int id : ids) commands_.Add({id, text, [action](const UiState&) { action(); }, state});
    };
    const auto addForEntry = [this](int id, std::string_view text, std::function<void(int)> action) {
        commands_.Add({id, text, [action](const UiState& ui) { action(ui.selectedEntry); }, NeedsSelectedEntry});
    };
    // The right-click menu of the main window; some also have a button.
    add({IDM_OPEN_FILES, IDC_MAIN_OPEN}, "打开文件(&O)...", [this] { TakeAddResult(queue_.AddFromOpenDialog()); });
    add({IDM_OPEN_FOLDER, IDC_QUICK_FOLDER}, "打开文件夹(&F)...", [this] { TakeAddResult(queue_.AddFromFolder()); });
    add({IDM_OPEN_LIST}, "打开列表文件(&P)...", [this] { OpenListFile(); });
    add({IDM_SAVE_LIST}, "保存列表文件(&S)...", [this] { lists_.SaveListFile(); });
    add({IDM_JUMP_TO_TIME, IDC_MAIN_TIME}, "直接播放(&T)...", [this] { player_.JumpToTime(); });
    add({IDM_SONG_MENU}, kSongMenuText, [this] { ShowSongMenu(false); });
    add({IDC_MAIN_SONG_MENU}, {}, [this] { ShowSongMenu(true); });
    add({IDM_DEFAULT_LIST_SAVE}, "“把当前列表设成默认列表”", [this] { defaultList_.SaveDefaultList(); });
    add({IDM_DEFAULT_LIST_DELETE}, "删除当前默认列表", [this] { defaultList_.DeleteDefaultList(); });
    add({IDM_LIBRARY_LOAD, IDC_MAIN_LIBRARY}, "打开‘我的音乐库’", [this] { library_.LoadLibrary(); });
    add({IDM_LIBRARY_ADD_CURRENT}, "把当前正在播放的文件保存到‘我的音乐库’。", [this] { library_.AddCurrentToLibrary(); });
    add({IDM_LIBRARY_ADD_ALL}, "把当前所有文件保存到‘我的音乐库’", [this] { library_.AddAllToLibrary(); });
    add({IDM_LIBRARY_CHANGE}, "更改“我的音乐库”的路径", [this] { library_.ChangeLibraryFolder(); });
    add({IDM_LIBRARY_DELETE}, "删除“我的音乐库”", [this] { library_.DeleteLibrary(); });
    add({IDM_MEDIA_INFO, IDC_QUICK_INFO}, "媒体信息编辑(&I)...", [this] { OpenInfoEditor(); });
    add({IDM_ASSIGN_LYRICS}, "为当前文件指定歌词文件...", [this] { AssignLyrics(); });
    add(
        {IDM_LYRICS_WINDOW, IDC_QUICK_LYRICS}, kLyricsWindowCaption,
        [this] {
            display_.Toggle();
            displayClosedByUser_ = !display_.Visible();
        },
        CheckedWhileLyricsWindowShown);
    add({IDM_LYRICS_SETTINGS}, "歌词显示设置...", [this] { EditLyricsSettings(); });
    add({IDM_SHOW_PLAYLIST, IDC_MAIN_LIST}, "文件列表(&L)", [this] { playlist_.Toggle(); }, CheckedWhilePlaylistShown);
    add({IDM_SETTINGS, IDC_QUICK_SETTINGS}, "功能与设置(&G)...", [this] { OpenSettings(SettingsPageChoice::First); });
    add({IDM_SETTINGS_FILE_TYPES}, {}, [this] { OpenSettings(SettingsPageChoice::FileTypes); });
    add({IDM_EXIT}, "退出(&X)", [this] { Close(); });
    for (size_t i = 0; i < kSkinStates.size(); ++i) {
        const SkinChoice& skin = SkinChoices()[i];
        add(
            {IDM_SKIN_FIRST + static_cast<int>(i)}, skin.name, [this, &skin] { ChooseSkin(skin.value); },
            kSkinStates[i]);
    }
    add({IDC_QUICK_SKIN}, {},
        [this] { window_.ShowMenuUnder(IDC_QUICK_SKIN, commands_.Menu(kSkinMenu, CurrentUiState())); });
    add({IDM_TRAY_PLAY_PAUSE}, "播放/暂停(&P)", [this] { player_.PlayPause(); });
    add({IDM_TRAY_NEXT}, "下一首(&N)", [this] { player_.Next(); });
    add({IDM_TRAY_PREVIOUS}, "上一首(&V)", [this] { player_.Previous(); });
    add({IDM_TRAY_SHOW}, "显示(&S)", [this] { ShowMainWindow(); });
    // The transport buttons.
    add({IDC_MAIN_PLAY}, {}, [this] { player_.PlayPause(); });
    add({IDC_MAIN_STOP}, {}, [this] { player_.Stop(); });
    add({IDC_MAIN_PREVIOUS}, {}, [this] { player_.Previous(); });
    add({IDC_MAIN_NEXT}, {}, [this] { player_.Next(); });
    add({IDC_MAIN_BACK}, {}, [this] { player_.Back(); });
    add({IDC_MAIN_FORWARD}, {}, [this] { player_.Forward(); });
    add({IDC_MAIN_MODE_NORMAL}, {}, [this] { player_.SetNormal(); });
    add({IDC_MAIN_MODE_LOOP}, {}, [this] { player_.ToggleLoop(); });
    add({IDC_MAIN_MODE_RANDOM}, {}, [this] { player_.SetRandom(); });
    add({IDC_MAIN_TIME_MODE}, {}, [this] {
        player_.ToggleTimeMode();
        WriteOptionNow(settings_, services_.registry, opt::kTimeLabelMode, player_.ShowsRemaining() ? "1" : "0");
    });
    add({IDC_MAIN_DECODER_WORKAROUND}, {}, [this] { ToggleDecoderWorkaround(); });
    add({IDC_MAIN_SEGMENT}, {}, [this] { player_.SegmentCommand(); });
    add({IDC_MAIN_SEGMENT_A}, {}, [this] { player_.SetA(); });
    add({IDC_MAIN_SEGMENT_B}, {}, [this] { player_.SetB(); });
    add({IDM_VOLUME_UP}, {}, [this] { StepVolume(1); });
    add({IDM_VOLUME_DOWN}, {}, [this] { StepVolume(-1); });
    // The playlist window's menu: the first three work on the selected line.
    addForEntry(IDM_PLAYLIST_PLAY, "播放(&P)", [this](int index) { player_.PlayEntry(index); });
    addForEntry(IDM_PLAYLIST_REMOVE, "删除(&D)", [this](int index) { queue_.RemoveEntry(index); });
    addForEntry(IDM_PLAYLIST_MOVE, "移动(&M)...", [this](int index) { queue_.MoveEntry(index); });
    add({IDM_PLAYLIST_FIND}, "查找(&F)...", [this] { queue_.FindFromCurrent(player_.FilePlays()); });
}

UiState App::CurrentUiState() const {
    return {display_.Visible(), playlist_.Visible(), playlist_.SelectedIndex(),
            SkinFor(settings_.Number(opt::kSkin)).value};
}

// A command waits for nested work to end (its windows stay usable, but nothing new starts inside it).
void App::OnCommand(int id) {
    if (IsBusy()) return;
    if (id >= kFirstSongCommand && id <= kLastSongCommand) {
        player_.PlayEntry(id - kFirstSongCommand + 1);  // a line of the song menu or a block
    } else {
        commands_.Run(id, CurrentUiState());
    }
}
void App::RunCommand(int id) {
    if (!IsBusy()) commands_.Run(id, CurrentUiState());
}
std::vector<MenuLine> App::ContextMenu() { return WithKeys(commands_.Menu(kMainMenu, CurrentUiState())); }
std::vector<MenuLine> App::TrayMenu() { return commands_.Menu(kTrayMenu, CurrentUiState()); }
std::vector<MenuLine> App::PlaylistMenu() { return WithKeys(commands_.Menu(kPlaylistMenu, CurrentUiState())); }

// The system's menu texts stay as they are; the key follows after a tab.
std::vector<MenuLine> App::WithKeys(std::vector<MenuLine> lines) const {
    for (MenuLine& line : lines) {
        for (const auto& [key, id] : kKeyCommands) {
            if (id == line.id && !KeyLabel(key).empty()) line.text += "\t" + KeyLabel(key);
        }
    }
    return lines;
}

void App::RunKeyCommand(KeyCommand command) {
    for (const auto& [key, id] : kKeyCommands) {
        if (key == command) RunCommand(id);
    }
}

bool App::FilterMessage(MSG& msg) {
    if ((msg.message != WM_KEYDOWN && msg.message != WM_SYSKEYDOWN) || !msg.hwnd || IsBusy()) return false;
    HWND root = GetAncestor(msg.hwnd, GA_ROOT);
    if (root != window_.Handle() && root != playlist_.Handle()) return false;
    const KeyPress press{static_cast<unsigned>(msg.wParam), GetKeyState(VK_CONTROL) < 0, GetKeyState(VK_SHIFT) < 0,
                         GetKeyState(VK_MENU) < 0, (msg.lParam & (1L << 30)) != 0};
    const KeyCommand command = CommandForKey(press, FocusOf(msg.hwnd, root == playlist_.Handle()));
    if (command == KeyCommand::None) return window_.TakeDialogKey(msg);
    RunKeyCommand(command);
    return true;
}

bool App::OnAppCommand(int appCommand) {
    const KeyCommand command = CommandForAppCommand(appCommand, player_.IsPlaying());
    if (command == KeyCommand::None) return false;
    // A held media key also comes while a dialog of Lumora's is open: the dialog finishes first.
    if (IsWindowEnabled(window_.Handle())) RunKeyCommand(command);
    return true;
}

void App::StepVolume(int step) {
    const int level = player_.Texts().volume + step;  // the slider and the player keep it in range
    window_.SetVolumePosition(level);
    OnSlider(IDC_MAIN_VOLUME, SliderMove::Released, level);
}

void App::OpenListFile() {
    const auto path =
        services_.prompts.AskOpenFileName("打开Lumora专用列表文件（*.QLB）", "QLB Lumora列表文件 (*.qlb)|*.qlb");
    if (path) lists_.LoadListFile(*path);
}

void App::OpenInfoEditor() {
    InfoEditorDialog dialog;
    const PlayQueue& queue = queue_.Queue();
    const auto lines = queue.Lines();
    for (int i = 1; i <= queue.Count(); ++i) {
        const MediaEntry* entry = queue.EntryAt(i);
        if (entry) dialog.files.push_back({lines[static_cast<size_t>(i - 1)], entry->path});
    }
    dialog.first = queue.Current() > 0 ? queue.Current() - 1 : (dialog.files.empty() ? -1 : 0);
    dialog.holder = &player_;
    dialog.Run(window_.Handle(), services_.files);
    // What was saved may be the playing file's lyrics: read them again.
    if (const MediaEntry* playing = queue.EntryAt(queue.Current())) lyrics_.Load(playing->path);
}

void App::AssignLyrics() {
    const PlayQueue& queue = queue_.Queue();
    const MediaEntry* playing = queue.EntryAt(queue.Current());
    if (!playing) {
        services_.prompts.ShowMessage("当前没有文件播放，无法指定歌词文件。", kAssignLyricsTitle);
        return;
    }
    const auto lyrics = services_.prompts.AskOpenFileName("为当前播放的文件指定歌词文件",
                                                          "歌词文件 (*.qgc;*.lrc;*.smi)|*.qgc;*.lrc;*.smi");
    if (!lyrics) return;
    switch (AssignLyricsFile(services_.files, playing->path, *lyrics)) {
        case AssignResult::Assigned:
            lyrics_.Load(playing->path);
            break;
        case AssignResult::NotStorable:
            services_.prompts.ShowMessage("歌词文件的路径或媒体文件名含有无法保存的字符，无法指定。", kAssignLyricsTitle);
            break;
        case AssignResult::Failed:
            services_.prompts.ShowMessage("无法写入歌词记录文件 zvplaygc.ini。", kAssignLyricsTitle);
            break;
    }
}

void App::EditLyricsSettings() {
    LyricsSettingsDialog dialog;
    dialog.settings = lyricsSettings_;
    if (!dialog.Run(window_.Handle())) return;
    if (SaveLyricsDisplaySettings(services_.registry, dialog.settings)) ApplyLyricsSettings(dialog.settings);
}

}  // namespace lumora
