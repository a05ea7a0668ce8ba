#pragma once
// Stable control, menu and window identities: the end-to-end driver finds controls by these.
// One numeric block per window.

namespace lumora::ids {

// Window classes and fixed titles.
inline constexpr wchar_t kMainClass[] = L"LumoraMain";
inline constexpr wchar_t kPlaylistClass[] = L"LumoraPlaylist";
inline constexpr wchar_t kSplashClass[] = L"frmSplash";
inline constexpr char kMainTitle[] = "Lumora";
// The music library's copy window and the menu that opens it.
inline constexpr char kAddToLibraryText[] = "添加文件到“我的音乐库”";

// Main window: 1000-1099.
inline constexpr int IDC_MAIN_PLAY = 1001;
inline constexpr int IDC_MAIN_STOP = 1002;
inline constexpr int IDC_MAIN_PREVIOUS = 1003;
inline constexpr int IDC_MAIN_NEXT = 1004;
inline constexpr int IDC_MAIN_BACK = 1005;
inline constexpr int IDC_MAIN_FORWARD = 1006;
inline constexpr int IDC_MAIN_LIST = 1007;
inline constexpr int IDC_MAIN_OPEN = 1008;
inline constexpr int IDC_MAIN_LIBRARY = 1009;
inline constexpr int IDC_MAIN_PROGRESS = 1010;
inline constexpr int IDC_MAIN_VOLUME = 1011;
inline constexpr int IDC_MAIN_SPEED = 1012;
inline constexpr int IDC_MAIN_TITLE = 1020;
inline constexpr int IDC_MAIN_TIME = 1021;
inline constexpr int IDC_MAIN_TIME_MODE = 1022;
inline constexpr int IDC_MAIN_PERCENT = 1023;
inline constexpr int IDC_MAIN_MODE = 1024;
inline constexpr int IDC_MAIN_MODE_NORMAL = 1025;
inline constexpr int IDC_MAIN_MODE_LOOP = 1026;
inline constexpr int IDC_MAIN_MODE_RANDOM = 1027;
inline constexpr int IDC_MAIN_SEGMENT = 1028;
inline constexpr int IDC_MAIN_SEGMENT_A = 1029;
inline constexpr int IDC_MAIN_SEGMENT_B = 1030;
inline constexpr int IDC_MAIN_SEGMENT_RANGE = 1031;
inline constexpr int IDC_MAIN_PREVIOUS_LABEL = 1032;
inline constexpr int IDC_MAIN_NEXT_LABEL = 1033;
inline constexpr int IDC_MAIN_COMBINED = 1034;
inline constexpr int IDC_MAIN_STATUS = 1035;
inline constexpr int IDC_MAIN_VOLUME_LABEL = 1036;
inline constexpr int IDC_MAIN_SPEED_LABEL = 1037;
inline constexpr int IDC_MAIN_STATUS_LINE = 1038;
inline constexpr int IDC_MAIN_TAG_LINE = 1039;  // title, artist, album, year and comment of the tag
inline constexpr int IDC_MAIN_VOLUME_MIN = 1040;  // the volume slider's end labels
inline constexpr int IDC_MAIN_VOLUME_MAX = 1041;
inline constexpr int IDC_MAIN_DECODER_WORKAROUND = 1042;  // "倒制": toggles "解码倒制" and keeps it at once

// Main window menu: 1200-1249.
inline constexpr int IDM_OPEN_FILES = 1201;
inline constexpr int IDM_OPEN_FOLDER = 1202;
inline constexpr int IDM_SHOW_PLAYLIST = 1203;
inline constexpr int IDM_EXIT = 1204;
inline constexpr int IDM_JUMP_TO_TIME = 1205;
inline constexpr int IDM_OPEN_LIST = 1206;
inline constexpr int IDM_SAVE_LIST = 1207;
inline constexpr int IDM_DEFAULT_LIST_SAVE = 1208;
inline constexpr int IDM_DEFAULT_LIST_DELETE = 1209;
inline constexpr int IDM_LIBRARY_LOAD = 1210;
inline constexpr int IDM_LIBRARY_ADD_CURRENT = 1211;
inline constexpr int IDM_LIBRARY_ADD_ALL = 1212;
inline constexpr int IDM_LIBRARY_CHANGE = 1213;
inline constexpr int IDM_LIBRARY_DELETE = 1214;
inline constexpr int IDM_MEDIA_INFO = 1215;
inline constexpr int IDM_ASSIGN_LYRICS = 1216;
inline constexpr int IDM_LYRICS_WINDOW = 1217;
inline constexpr int IDM_LYRICS_SETTINGS = 1218;
// Commands of keys only: the volume slider moved by one step.
inline constexpr int IDM_VOLUME_UP = 1219;
inline constexpr int IDM_VOLUME_DOWN = 1220;
inline constexpr int IDM_SETTINGS = 1221;
inline constexpr int IDM_SETTINGS_FILE_TYPES = 1222;  // the dialog opened on its file types ("set")
// The notification-area icon's menu (1223-1229).
inline constexpr int IDM_TRAY_PLAY_PAUSE = 1223;
inline constexpr int IDM_TRAY_NEXT = 1224;
inline constexpr int IDM_TRAY_PREVIOUS = 1225;
inline constexpr int IDM_TRAY_SHOW = 1226;

// The song menu "选歌": its button and block view 1930-1939, its menu entry 1230-1239, and one command
// per queue entry from kFirstSongCommand on (entry n sends kFirstSongCommand + n - 1).
inline constexpr char kSongMenuText[] = "选歌";
inline constexpr int IDC_MAIN_SONG_MENU = 1930;
inline constexpr int IDC_MAIN_SONG_BLOCKS = 1931;
inline constexpr int IDM_SONG_MENU = 1230;
inline constexpr int kFirstSongCommand = 3000;
inline constexpr int kLastSongCommand = 3998;

// Playlist window: 1100-1149; its menu 1250-1299.
inline constexpr int IDC_PLAYLIST_LINES = 1101;
inline constexpr int IDM_PLAYLIST_REMOVE = 1251;
inline constexpr int IDM_PLAYLIST_MOVE = 1252;
inline constexpr int IDM_PLAYLIST_FIND = 1253;
inline constexpr int IDM_PLAYLIST_PLAY = 1254;

// Audio display window (the tag and stream panel): 1400-1449.
inline constexpr int IDC_STREAM_TITLE = 1401;
inline constexpr int IDC_STREAM_BIT_RATE = 1402;
inline constexpr int IDC_STREAM_FREQUENCY = 1403;
inline constexpr int IDC_STREAM_LAYER = 1404;
inline constexpr int IDC_STREAM_TOTAL_FRAMES = 1405;
inline constexpr int IDC_STREAM_FRAMES_READ = 1406;
inline constexpr int IDC_STREAM_FLAGS = 1407;
inline constexpr int IDC_STREAM_MPEG = 1408;
inline constexpr int IDC_STREAM_MS_PER_FRAME = 1409;
inline constexpr int IDC_STREAM_TOTAL_TIME = 1410;
// The two lyrics lines: the one whose time has come and the next.
inline constexpr int IDC_LYRICS_CURRENT = 1420;
inline constexpr int IDC_LYRICS_NEXT = 1421;

// Progress window of list filtering and library copies: 1500-1549.
inline constexpr wchar_t kProgressClass[] = L"LumoraProgress";
inline constexpr int IDC_PROGRESS_STATUS = 1501;
inline constexpr int IDC_PROGRESS_FILTERED = 1502;
inline constexpr int IDC_PROGRESS_REMAINING = 1503;
inline constexpr int IDC_PROGRESS_LINES = 1504;
inline constexpr int IDC_PROGRESS_CANCEL = 1505;

// Media information editor: 1600-1649.
inline constexpr char kInfoEditorTitle[] = "媒体信息编辑";
inline constexpr int IDC_INFO_FILES = 1601;
inline constexpr int IDC_INFO_TITLE = 1602;
inline constexpr int IDC_INFO_ARTIST = 1603;
inline constexpr int IDC_INFO_ALBUM = 1604;
inline constexpr int IDC_INFO_YEAR = 1605;
inline constexpr int IDC_INFO_COMMENT = 1606;
inline constexpr int IDC_INFO_LYRICS = 1607;
inline constexpr int IDC_INFO_READ_ONLY = 1608;
inline constexpr int IDC_INFO_SHIFT = 1609;
inline constexpr int IDC_INFO_SHIFT_VALUE = 1610;
inline constexpr int IDC_INFO_SAVE = 1611;
inline constexpr int IDC_INFO_EXPORT = 1612;
inline constexpr int IDC_INFO_IMPORT = 1613;
inline constexpr int IDC_INFO_PATH = 1614;

// Lyrics display settings: 1650-1699.
inline constexpr char kLyricsSettingsTitle[] = "歌词显示设置";
inline constexpr int IDC_LYRICS_SET_LIMIT = 1651;
inline constexpr int IDC_LYRICS_SET_LABEL = 1652;
inline constexpr int IDC_LYRICS_SET_PREVIEW = 1653;
inline constexpr int IDC_LYRICS_SET_BACKGROUND = 1654;
inline constexpr int IDC_LYRICS_SET_CURRENT = 1655;
inline constexpr int IDC_LYRICS_SET_NEXT = 1656;
inline constexpr int IDC_LYRICS_SET_CURRENT_SIZE = 1657;
inline constexpr int IDC_LYRICS_SET_NEXT_SIZE = 1658;
inline constexpr int IDC_LYRICS_SET_PICTURE_ON = 1659;
inline constexpr int IDC_LYRICS_SET_PICTURE_STRETCH = 1660;
inline constexpr int IDC_LYRICS_SET_PICTURE = 1661;
inline constexpr int IDC_LYRICS_SET_PICTURE_PATH = 1662;

// Settings dialog "功能与设置": 1700-1799 its frame and option pages; 1800-1849 the file-type, icon
// and context-menu pages; 1850-1869 the icon chooser; 1870-1899 the sound card inspector.
inline constexpr char kSettingsTitle[] = "功能与设置";
inline constexpr int IDC_SET_TABS = 1701;
inline constexpr int IDC_SET_SONG_MENU_WARNING = 1702;  // "设置不当“选歌”菜单会超出屏幕。"
inline constexpr int IDC_SET_BALLOON_PREVIEW = 1703;    // the balloon colours' preview
inline constexpr int IDC_SET_BACKUP = 1704;
inline constexpr int IDC_SET_RESTORE = 1705;
inline constexpr int IDC_SET_SOUND_CARD = 1706;
// The options' controls: FormControlId (settings/OptionForm.h), from 2000 on.

// Sound card inspector: 1870-1899.
inline constexpr char kSoundCardTitle[] = "声卡检测";
inline constexpr int IDC_SOUND_NAME = 1871;
inline constexpr int IDC_SOUND_PRODUCT = 1872;
inline constexpr int IDC_SOUND_DRIVER = 1873;
inline constexpr int IDC_SOUND_VERSION = 1874;
inline constexpr int IDC_SOUND_CHANNELS = 1875;
inline constexpr int IDC_SOUND_FORMATS_HEADING = 1876;
inline constexpr int IDC_SOUND_FORMATS = 1877;
inline constexpr int IDC_SOUND_FUNCTIONS_HEADING = 1878;
inline constexpr int IDC_SOUND_FUNCTIONS = 1879;
inline constexpr int IDC_SOUND_AGAIN = 1880;  // runs the inspection again; IDCANCEL closes

// The file-type, icon and context-menu pages: 1800-1849.
inline constexpr char kFileTypesPageTitle[] = "文件类型注册";
inline constexpr char kFileIconPageTitle[] = "注册文件图标设置";
inline constexpr char kShellMenuPageTitle[] = "右键菜单设置";
inline constexpr int IDC_FILETYPES_LIST = 1801;  // one row per extension, checked when Lumora opens it
inline constexpr int IDC_FILETYPES_ALL = 1802;
inline constexpr int IDC_FILETYPES_NONE = 1803;
inline constexpr int IDC_FILETYPES_DEFAULT_APPS = 1804;  // hidden where the system has no Default Apps
inline constexpr int IDC_FILEICON_PREVIEW = 1811;
inline constexpr int IDC_FILEICON_FILE = 1812;
inline constexpr int IDC_FILEICON_INDEX = 1813;
inline constexpr int IDC_FILEICON_CHOOSE = 1814;
inline constexpr int IDC_SHELLMENU_FOLDER = 1821;
inline constexpr int IDC_SHELLMENU_FOLDER_NOTE = 1822;
inline constexpr int IDC_SHELLMENU_DRIVE = 1823;
inline constexpr int IDC_SHELLMENU_DRIVE_NOTE = 1824;

// Icon chooser: 1850-1869.
inline constexpr char kIconChooserTitle[] = "选择图标";
inline constexpr int IDC_ICONS_FILE = 1851;  // the files offered, the system's icon library first
inline constexpr int IDC_ICONS_BROWSE = 1852;
inline constexpr int IDC_ICONS_LIST = 1853;  // one item per icon, its index as the item's data
inline constexpr int IDC_ICONS_INDEX = 1854;

// Skins and looks: the main window's quick buttons 1900-1929, the skin menu's commands 1960-1969.
inline constexpr int IDC_QUICK_LYRICS = 1901;
inline constexpr int IDC_QUICK_INFO = 1902;
inline constexpr int IDC_QUICK_FOLDER = 1903;
inline constexpr int IDC_QUICK_SETTINGS = 1904;
inline constexpr int IDC_QUICK_SKIN = 1905;  // the skin menu under it
inline constexpr int kScrollTimerId = 1920;  // the main window's running text
// One command per skin, in the order of SkinChoices() (common/SkinDescription.h).
inline constexpr int IDM_SKIN_FIRST = 1960;
inline constexpr char kSkinMenuText[] = "界面";  // the skin menu and its quick button
// The settings dialog's transparency page: 1950-1959.
inline constexpr char kTransparencyPageTitle[] = "透明度";
inline constexpr int IDC_TRANSPARENCY_ON = 1950;      // "form_tm_check1"
inline constexpr int IDC_TRANSPARENCY_SLIDER = 1951;  // 1951-1953: main, list and lyrics window, 20-255
inline constexpr int IDC_TRANSPARENCY_VALUE = 1954;   // 1954-1956: each slider's value as a text

// Splash window: 1300-1349.
inline constexpr int IDC_SPLASH_OS = 1301;

}  // namespace lumora::ids
