#pragma once
// The media information editor's decisions and texts, for one media file at a time. The dialog (ui/)
// owns the boxes: it hands the six items over with SetFields before every command, passes the read-only
// check box on with SetRemoveReadOnly, and shows what InfoEditorView is told. Messages and questions go
// through the Prompts port.
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "mediainfo/InfoBlock.h"

namespace lumora {

class FileSystem;
class Prompts;

// The time-track shift dialog: its prompt and the note shown under it, in one input box.
inline constexpr std::string_view kTimeShiftPrompt =
    "请输入时间轨的偏移量，就是把整个歌词的时间轨整体偏移N秒，如果增加5秒就填写“5”，如果要减少5秒就填写“-5”";
inline constexpr std::string_view kTimeShiftNote =
    "没有时间轨的语句，程序则自动添加，如果转换后的时间轨小于“0”，程序则强制为“0”。";
inline constexpr std::string_view kTimeShiftTitle = "时间轨偏移";

// The QGC save and open dialogs.
inline constexpr std::string_view kQgcExportTitle = "导出媒体信息文件";
inline constexpr std::string_view kQgcImportTitle = "导入媒体信息文件";
inline constexpr std::string_view kQgcFilter = "媒体信息文件 (*.QGC)|*.QGC";
inline constexpr std::string_view kQgcExtension = "QGC";

class InfoEditorView {
public:
    virtual ~InfoEditorView() = default;
    // Fills the six boxes (after a file is taken and after an import, and with the shifted lyrics after
    // a save that shifted them).
    virtual void ShowFields(const MediaInfoRecord& record) = 0;
    // The chosen time-track shift in seconds beside its check box; empty: none (box cleared).
    virtual void ShowTimeShift(std::optional<long long> seconds) = 0;
    // Re-reads the editor's file list after a successful save, so it shows what the file now holds.
    virtual void RefreshFileList() = 0;
};

enum class InfoSaveOutcome {
    Saved,            // "恭喜！媒体信息保存完毕！" shown, file list refreshed
    NoFile,           // no file taken: nothing happens
    Invalid,          // a field's message shown; nothing written
    NoLyricsToShift,  // a shift is chosen but the lyrics are empty: said so, nothing written
    BadTimeTrack,     // a stamp the shift cannot read: said so, nothing written
    WriteFailed,      // the save-failure message shown; the editor keeps its contents for a retry
};

// Lumora's own hold on a media file (the device that plays it), let go for a write and taken back after.
class FileHolder {
public:
    virtual ~FileHolder() = default;
    // Lets go of `path` when Lumora holds it open; false, with nothing done, otherwise.
    virtual bool LetGo(const std::string& path) = 0;
    // Takes the file back where it was: at the same position, playing, paused or stopped as before.
    virtual void TakeBack() = 0;
};

class InfoEditor {
public:
    // `versionText` goes into exported QGC files (the version the start-up screen shows). `holder`, when
    // given, lets go of a file Lumora itself holds for the write test and the write.
    InfoEditor(FileSystem& fs, Prompts& prompts, InfoEditorView& view, std::string versionText,
               FileHolder* holder = nullptr)
        : fs_(fs), prompts_(prompts), view_(view), versionText_(std::move(versionText)), holder_(holder) {}

    // The first command: takes the file to edit. The file is opened for writing as a test (Lumora's own
    // hold let go for it); when that fails the user is told "此文件正在被程序使用、不存在或此文件为只读，现在无法保持。" and nothing else
    // happens (false). Otherwise the file's tag items and embedded lyrics are shown, the shift cleared.
    bool TakeFile(const std::string& path);
    const std::string& Path() const { return path_; }

    void SetFields(const MediaInfoRecord& record) { fields_ = record; }
    const MediaInfoRecord& Fields() const { return fields_; }
    // The check box that resets the file's attributes to normal before saving.
    void SetRemoveReadOnly(bool on) { removeReadOnly_ = on; }

    // Offers the time-track shift. With empty lyrics it says "现在没有歌词因此无法进行时间轨偏移。" and
    // asks nothing. Otherwise the input box asks for N (kTimeShiftPrompt and kTimeShiftNote); a whole
    // number (sign allowed) is chosen and shown, anything else is refused with a message. The shift is
    // applied by the next save. False when nothing was chosen.
    bool ChooseTimeShift();
    void ClearTimeShift();
    std::optional<long long> TimeShift() const { return timeShift_; }

    // Validates (first failing field's message, caption "错误"), resets the attributes when the check box
    // is set, applies a chosen shift (its result is validated again: added stamps make lyrics longer),
    // builds the lyrics field and writes the block. After a save the shift is cleared and shifted lyrics
    // are shown.
    InfoSaveOutcome Save();

    // Asks for a QGC file to write and writes the current items to it: "导出完毕！". A field code page
    // 936 cannot store is refused with its message; a file that cannot be written is said to be so.
    bool ExportQgc();
    // Asks for a QGC file and fills the boxes from it: "导入完毕！". Nothing is written to the media file.
    bool ImportQgc();

private:
    FileSystem& fs_;
    Prompts& prompts_;
    InfoEditorView& view_;
    std::string versionText_;
    FileHolder* holder_;
    std::string path_;
    MediaInfoRecord fields_;
    bool removeReadOnly_ = false;
    std::optional<long long> timeShift_;
};

}  // namespace lumora
