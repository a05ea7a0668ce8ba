#include "mediainfo/InfoEditor.h"

#include <algorithm>

#include "common/Text.h"
#include "common/Titles.h"
#include "mediainfo/LyricsTiming.h"
#include "mediainfo/QgcFile.h"
#include "ports/FileSystem.h"
#include "ports/Prompts.h"

namespace lumora {
namespace {

constexpr std::string_view kCannotEdit = "此文件正在被程序使用、不存在或此文件为只读，现在无法保持。";
constexpr std::string_view kSaved = "恭喜！媒体信息保存完毕！";
constexpr std::string_view kSaveFailed =
    "媒体信息保存失败！原因：1、此媒体文件正在使用中。2、此媒体的文件属性为“只读”。";
constexpr std::string_view kNoLyricsToShift = "现在没有歌词因此无法进行时间轨偏移。";
constexpr std::string_view kBadTimeTrack = "请确定“时间轨”格式，是否合法。";
constexpr std::string_view kExported = "导出完毕！";
constexpr std::string_view kImported = "导入完毕！";
// Our own wording for what the original boxes never said.
constexpr std::string_view kShiftNotNumber = "请输入整数秒数，例如“5”或“-5”。";
constexpr std::string_view kExportFailed = "导出失败！无法写入此文件。";
constexpr std::string_view kImportFailed = "导入失败！无法读取此文件。";
constexpr std::size_t kMaxShiftDigits = 9;

std::optional<long long> WholeNumber(std::string_view text) {
    text = Trim(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    if (text.empty() || text.size() > kMaxShiftDigits ||
        !AllDigits(text)) {
        return std::nullopt;
    }
    const long long value = std::stoll(std::string(text));
    return negative ? -value : value;
}

Id3v1Tag TagOf(const MediaInfoRecord& r) { return {r.title, r.artist, r.album, r.year, r.comment}; }

}  // namespace

bool InfoEditor::TakeFile(const std::string& path) {
    bool writable = fs_.CanOpenForWriting(path);
    if (!writable && holder_ && holder_->LetGo(path)) {
        writable = fs_.CanOpenForWriting(path);
        holder_->TakeBack();
    }
    if (!writable) {
        prompts_.ShowMessage(kCannotEdit, kErrorTitle);
        return false;
    }
    path_ = path;
    fields_ = ReadMediaInfo(fs_, path).value_or(MediaInfoRecord{});
    ClearTimeShift();
    view_.ShowFields(fields_);
    return true;
}

bool InfoEditor::ChooseTimeShift() {
    if (fields_.lyrics.empty()) {
        prompts_.ShowMessage(kNoLyricsToShift, kErrorTitle);
        return false;
    }
    const std::string prompt = std::string(kTimeShiftPrompt) + "\r\n" + std::string(kTimeShiftNote);
    const auto answer = prompts_.AskText(prompt, kTimeShiftTitle, "0");
    if (!answer) return false;
    const auto seconds = WholeNumber(*answer);
    if (!seconds) {
        prompts_.ShowMessage(kShiftNotNumber, kErrorTitle);
        return false;
    }
    timeShift_ = seconds;
    view_.ShowTimeShift(timeShift_);
    return true;
}

void InfoEditor::ClearTimeShift() {
    timeShift_.reset();
    view_.ShowTimeShift(std::nullopt);
}

InfoSaveOutcome InfoEditor::Save() {
    if (path_.empty()) return InfoSaveOutcome::NoFile;
    if (const auto refusal = ValidateMediaInfo(fields_)) {
        prompts_.ShowMessage(*refusal, kErrorTitle);
        return InfoSaveOutcome::Invalid;
    }
    if (removeReadOnly_) fs_.ClearAttributes(path_);

    MediaInfoRecord saved = fields_;
    if (timeShift_) {
        if (saved.lyrics.empty()) {
            prompts_.ShowMessage(kNoLyricsToShift, kErrorTitle);
            return InfoSaveOutcome::NoLyricsToShift;
        }
        const auto shifted = ShiftTimeTrack(saved.lyrics, *timeShift_);
        if (!shifted) {
            prompts_.ShowMessage(kBadTimeTrack, kErrorTitle);
            return InfoSaveOutcome::BadTimeTrack;
        }
        saved.lyrics = *shifted;
        if (const auto refusal = ValidateMediaInfo(saved)) {
            prompts_.ShowMessage(*refusal, kErrorTitle);
            return InfoSaveOutcome::Invalid;
        }
    }

    // The playing device may hold the file: it lets go for the write and goes on afterwards.
    const bool letGo = holder_ && !fs_.CanOpenForWriting(path_) && holder_->LetGo(path_);
    const InfoWriteResult written = WriteInfoBlock(fs_, path_, TagOf(saved), BuildLyricsField(saved.lyrics));
    if (letGo) holder_->TakeBack();
    if (written != InfoWriteResult::Written) {
        prompts_.ShowMessage(kSaveFailed, kErrorTitle);
        return InfoSaveOutcome::WriteFailed;
    }
    const bool shifted = timeShift_.has_value();
    fields_ = saved;
    ClearTimeShift();
    if (shifted) view_.ShowFields(fields_);
    prompts_.ShowMessage(kSaved, kDoneTitle);
    view_.RefreshFileList();
    return InfoSaveOutcome::Saved;
}

bool InfoEditor::ExportQgc() {
    const auto target = prompts_.AskSaveFileName(kQgcExportTitle, kQgcFilter, kQgcExtension);
    if (!target) return false;
    if (const auto refusal = UnstorableFieldMessage(fields_)) {
        prompts_.ShowMessage(*refusal, kErrorTitle);
        return false;
    }
    if (!WriteQgcFile(fs_, *target, fields_, versionText_)) {
        prompts_.ShowMessage(kExportFailed, kErrorTitle);
        return false;
    }
    prompts_.ShowMessage(kExported, kDoneTitle);
    return true;
}

bool InfoEditor::ImportQgc() {
    const auto source = prompts_.AskOpenFileName(kQgcImportTitle, kQgcFilter);
    if (!source) return false;
    const auto record = ReadQgcFile(fs_, *source);
    if (!record) {
        prompts_.ShowMessage(kImportFailed, kErrorTitle);
        return false;
    }
    fields_ = *record;
    view_.ShowFields(fields_);
    prompts_.ShowMessage(kImported, kDoneTitle);
    return true;
}

}  // namespace lumora
