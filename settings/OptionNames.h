#pragma once
// The registry value names of the options and of the values the windows keep beside them, one
// constant each, named by what the value means. The option table lives in SettingsStore.cpp.
#include <string_view>

namespace lumora::opt {

// ---- Options the settings dialog edits ------------------------------------------------------
inline constexpr std::string_view kBackSeconds = "L1";         // seconds jumped by "后退"
inline constexpr std::string_view kForwardSeconds = "L2";      // seconds jumped by "前进"
inline constexpr std::string_view kBackgroundColours = "L6";   // "“背景”" check box
inline constexpr std::string_view kPanelTextColours = "L8";    // "“字颜色”" check box
inline constexpr std::string_view kTrayIcon = "L11";           // "“最小化到任务拦”"
inline constexpr std::string_view kFilterLists = "L13";        // "1": filter when making or loading list files
inline constexpr std::string_view kDefaultListPlays = "L15";   // "1": the default list plays by itself
inline constexpr std::string_view kAskOnUnplayable = "L16";    // "1": a box when a file cannot be played, "0": next
inline constexpr std::string_view kClassicListTips = "L22";    // "“文件列表框使用“经典”提示文本”"
inline constexpr std::string_view kMenuColours = "L24";        // "“菜单”" check box
inline constexpr std::string_view kDecoder = "L25";            // "0": decoder 1, anything else decoder 2
inline constexpr std::string_view kMainWindowTopmost = "L26";  // "“主窗体”在最前面"
inline constexpr std::string_view kBubbles = "L27";            // bubbles in place of the audio display, decoder 2
inline constexpr std::string_view kListWindowTopmost = "L28";  // "“列表/音频显示框”在最前面"
inline constexpr std::string_view kListReadsMediaInfo = "L29";  // "“文件列表框中直接截取媒体文件信息”"
inline constexpr std::string_view kRunningTextSpeed = "L30";    // speed of the main window's running text, 1..100
inline constexpr std::string_view kBalloonHelp = "L31";         // "“显示“气泡”式帮助提示文本”"
inline constexpr std::string_view kLibraryRenameBox = "L32";    // "1": the rename box comes for every single add
inline constexpr std::string_view kLibraryNameIsTitle = "L33";  // "1": the rename box proposes the title, "0" the name
inline constexpr std::string_view kDefaultBalloonColours = "L34";  // "“气泡”提示文本，使用默认颜色"
inline constexpr std::string_view kBalloonBackColour = "L34B";     // balloon tip background colour
inline constexpr std::string_view kBalloonTextColour = "L34F";     // balloon tip text colour
inline constexpr std::string_view kSkin = "L35";                   // interface skin, an index of the skin list
inline constexpr std::string_view kFlatSongMenu = "L36";           // "“选歌”菜单采用“列表试”"
inline constexpr std::string_view kColouredBubbles = "L37";        // "变色“泡沫”显示开关"
inline constexpr std::string_view kInfoBalloons = "L38";           // "“显示“气泡”式信息提示文本”"
inline constexpr std::string_view kSongMenuLayout = "L39";         // song-menu layout, an index ("自动调节" first)
inline constexpr std::string_view kAutoSongMenuType = "L40";       // "自动设置“选歌”菜单类型。"
inline constexpr std::string_view kSongMenuUpperBound = "L41";     // song-menu type upper bound, 0..998
inline constexpr std::string_view kSongMenuLowerBound = "L42";     // song-menu type lower bound, above the upper one
inline constexpr std::string_view kColouredProgress = "L43";       // "进度滑道变色"
inline constexpr std::string_view kSamePlayer = "L44";             // "使用同一播放器"
inline constexpr std::string_view kVideoStartSize = "L45";         // 0 full screen, 1 sized to the picture, 2 as it is
inline constexpr std::string_view kVideoScale = "L46";             // scale of the automatic video size, an index
inline constexpr std::string_view kSmallVideoSize = "L47";         // when the video is smaller than that scale
inline constexpr std::string_view kAutoOpenLyricsWindow = "L48";   // open the lyrics window for a file with lyrics
inline constexpr std::string_view kAutoCloseLyricsWindow = "L49";  // close it for a file without
inline constexpr std::string_view kStopScreenSaver = "L50";        // no screen saver while playing
inline constexpr std::string_view kCloseVideoForAudio = "L51";  // "当播放“音频”文件时自动关闭视频窗口"
inline constexpr std::string_view kVideoWindowAtStart = "L52";  // "启动时打开视频窗口"
inline constexpr std::string_view kVolumeFadeDelay = "L53";     // volume fade delay in steps of 50 ms
inline constexpr std::string_view kRepairMediaInfo = "L54";  // "使用“纠错”功能" when reading media information
inline constexpr std::string_view kDecoderWorkaround = "L55";  // "启用“解码倒制”"; a main-window button toggles it
inline constexpr std::string_view kSaveListOnExit = "L56";     // "1": the queue becomes the default list on exit
inline constexpr std::string_view kListWindowAtStart = "L57";  // "启动时打开列表窗口。位置："
inline constexpr std::string_view kTimeLabelMode = "L58";      // the time label: 0 elapsed, 1 remaining
inline constexpr std::string_view kShortcutButtons = "L59";    // "显示主窗体“快捷按钮”"
inline constexpr std::string_view kNoVolumeFade = "L60";       // "关闭音量渐变功能。延时:"
inline constexpr std::string_view kLyricsOffset = "L61";       // lyrics display offset in half seconds, -9..9
inline constexpr std::string_view kModuleSongMenu = "L62";  // "主界面“模块式”选歌方式，“泡沫”信息提示"
inline constexpr std::string_view kSkipListFilterQuestion = "L63";  // "1": never offer to filter an unfiltered list
inline constexpr std::string_view kNoLyricsWindowBubbles = "L64";   // no bubbles in the lyrics window
inline constexpr std::string_view kXpMenus = "L65";                 // XP-style menus
inline constexpr std::string_view kSamePlayerShowsMain =
    "L66";  // with kSamePlayer: a new file brings the main window back
inline constexpr std::string_view kNoVideoWindowForVideo = "L67";  // "播放“视频”文件时不弹出视频窗口"
inline constexpr std::string_view kLyricsWhileSeeking = "L68";     // show the lyrics reached while the slider moves
inline constexpr std::string_view kNoWindowFades = "L69";          // "关闭“窗口”渐变效果。"
inline constexpr std::string_view kStartupInfoBalloon = "L70";     // "启动提示软件信息(气泡提示)"
inline constexpr std::string_view kPlayInfoBalloon = "L71";        // "播放信息(气泡提示)"
inline constexpr std::string_view kHourlyChime = "L72";            // "整点报时(气泡提示)"
inline constexpr std::string_view kMenuBackColour = "L1B";         // menu background colour
inline constexpr std::string_view kMenuTextColour = "L1F";         // menu text colour

// ---- Options of Lumora's own beside the numbered ones ------------------------------------------
// Names of their own, not "L" numbers: the numbering's gaps stay empty.
// "1": the media keys reach Lumora also while another program has the focus; off unless "1".
inline constexpr std::string_view kMediaKeysAlways = "MediaKeysAlways";
// The companion of "启动时打开列表窗口。位置：": where the list window opens at start. 0 where it was last
// (F4L/F4T), 1 docked to the main window's right edge, 2 docked under it.
inline constexpr std::string_view kListWindowPlace = "ListWindowPlace";
// "1": the LRC and SMI readers' timing correction (CorrectLyricsSeconds) for the lyrics display.
inline constexpr std::string_view kLyricsTimingCorrection = "LyricsTimingCorrection";
// The user's own colours beside "“背景”" (L6) and "“字颜色”" (L8): the windows' background and the panels' text,
// drawn in place of the skin's while the check box is on. Colours as L34B.
inline constexpr std::string_view kBackColour = "BackColour";
inline constexpr std::string_view kPanelTextColour = "PanelTextColour";

// ---- Values the windows keep (twips), loaded with the options --------------------------------
inline constexpr std::string_view kMainTop = "TOP";
inline constexpr std::string_view kMainLeft = "LEFT";
inline constexpr std::string_view kVideoTop = "MovTOP";
inline constexpr std::string_view kVideoLeft = "MovLEFT";
inline constexpr std::string_view kVideoHeight = "MovH";
inline constexpr std::string_view kVideoWidth = "MovW";
inline constexpr std::string_view kVolume = "Vol";  // last volume level, empty until the user sets one

// ---- Values the playlist and lyrics windows read and write themselves -------------------------
inline constexpr std::string_view kListLeft = "F4L";
inline constexpr std::string_view kListTop = "F4T";
inline constexpr std::string_view kListWidth = "F4W";
inline constexpr std::string_view kListHeight = "F4H";
inline constexpr std::string_view kLyricsBackColour = "F8_BC";       // COLORREF in decimal
inline constexpr std::string_view kLyricsCurrentColour = "F8_1_YY";  // the line now sung
inline constexpr std::string_view kLyricsNextColour = "F8_2_YY";
inline constexpr std::string_view kLyricsCurrentPoints = "F8_GcLab1";  // 6..72
inline constexpr std::string_view kLyricsNextPoints = "F8_GcLab2";
inline constexpr std::string_view kLyricsUsePicture = "F8_PicYN";      // "1": the picture behind the lines
inline constexpr std::string_view kLyricsStretchPicture = "F8_PicMi";  // "1": stretched, "0": centred
inline constexpr std::string_view kLyricsPicture = "F8_BPic";          // its path

}  // namespace lumora::opt
