#include <gtest/gtest.h>

#include "common/Titles.h"

#include <string>
#include <vector>

#include "mediainfo/InfoEditor.h"
#include "mediainfo/QgcFile.h"
#include "support/Fakes.h"

namespace lumora {
namespace {


const std::string kPath = "D:\\音乐\\歌.mp3";

using test::Gbk;

class RecordingEditorView : public InfoEditorView {
public:
    void ShowFields(const MediaInfoRecord& record) override { shown.push_back(record); }
    void ShowTimeShift(std::optional<long long> seconds) override { shift = seconds; }
    void RefreshFileList() override { ++refreshes; }
    std::vector<MediaInfoRecord> shown;
    std::optional<long long> shift;
    int refreshes = 0;
};

class InfoEditorTest : public testing::Test {
protected:
    void SetUp() override {
        fs.files[kPath] = std::string(500, 'a');
        ASSERT_TRUE(editor.TakeFile(kPath));
    }

    test::FakeFileSystem fs;
    test::FakePrompts prompts;
    RecordingEditorView view;
    InfoEditor editor{fs, prompts, view, "1.2.3"};
};

TEST_F(InfoEditorTest, SavesOnlyAWritableFileWithValidFieldsAndShowsWhatItHoldsNext) {
    const MediaInfoRecord bad{"", "", "", "205", std::string(30, 'c'), ""};
    editor.SetFields(bad);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Invalid);
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{*ValidateMediaInfo(bad), std::string(kErrorTitle)}}));

    fs.readOnly.push_back(kPath);
    const MediaInfoRecord record{"标题", "歌手", "专集", "05", "其他", "[00:01]一\r\n[00:02]二"};
    editor.SetFields(record);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::WriteFailed);
    editor.SetRemoveReadOnly(true);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Saved);
    EXPECT_EQ(std::pair(prompts.messages.size(), view.refreshes), std::pair(std::size_t{3}, 1));
    ASSERT_TRUE(editor.TakeFile(kPath));
    EXPECT_EQ(view.shown.back(), record);

    fs.readOnly.push_back(kPath);
    EXPECT_FALSE(editor.TakeFile(kPath) || editor.TakeFile("D:\\missing.mp3"));
}

// A file Lumora itself holds (the playing device) is let go for the write test and the write, and taken
// back after each; a file read-only for real is still refused.
TEST_F(InfoEditorTest, LetsGoOfTheFileLumoraHoldsForTheWrite) {
    struct Holder : FileHolder {
        explicit Holder(test::FakeFileSystem& files) : fs(files) {}
        bool LetGo(const std::string& path) override {
            if (path != kPath) return false;
            log += "let go,";
            return std::erase(fs.readOnly, path) > 0;
        }
        void TakeBack() override {
            log += "back,";
            fs.readOnly.push_back(kPath);
        }
        test::FakeFileSystem& fs;
        std::string log;
    } holder{fs};
    InfoEditor held{fs, prompts, view, "1.2.3", &holder};
    fs.readOnly.push_back(kPath);  // the device's hold
    ASSERT_TRUE(held.TakeFile(kPath));
    held.SetFields({"标题", "", "", "", "", ""});
    EXPECT_EQ(held.Save(), InfoSaveOutcome::Saved);
    EXPECT_EQ(holder.log, "let go,back,let go,back,");
    EXPECT_NE(fs.files[kPath].find(Gbk("TAG标题")), std::string::npos);
    const std::string other = "D:\\音乐\\只读.mp3";
    fs.files[other] = "x";
    fs.readOnly.push_back(other);
    EXPECT_FALSE(held.TakeFile(other));
    EXPECT_EQ(prompts.messages.back().title, kErrorTitle);
}

TEST_F(InfoEditorTest, TimeTrackShiftIsAskedAndAppliedByTheSave) {
    EXPECT_FALSE(editor.ChooseTimeShift());  // no lyrics yet: nothing is asked
    EXPECT_EQ(std::pair(prompts.messages.size(), prompts.questions.size()), std::pair(std::size_t{1}, std::size_t{0}));
    editor.SetFields({"", "", "", "", "", "[00:03]a\r\n[01:10]b\r\nc"});
    prompts.textScript = {"五", " -5 "};
    EXPECT_FALSE(editor.ChooseTimeShift());
    EXPECT_TRUE(editor.ChooseTimeShift());
    EXPECT_EQ(view.shift, -5);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Saved);
    const std::string shifted = "[00:00]a\r\n[01:05]b\r\n[00:00]c";
    EXPECT_EQ(view.shown.back().lyrics, shifted);
    EXPECT_EQ(view.shift, std::nullopt);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Saved);  // saved again: not shifted twice
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), shifted);

    editor.SetFields({"", "", "", "", "", "[ab:cd]x"});
    prompts.textAnswer = "3";
    ASSERT_TRUE(editor.ChooseTimeShift());
    const std::size_t shown = prompts.messages.size();
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::BadTimeTrack);
    EXPECT_EQ(prompts.messages.size(), shown + 1);
    editor.SetFields({});
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::NoLyricsToShift);
}

TEST_F(InfoEditorTest, ExportsAndImportsQgcFiles) {
    const MediaInfoRecord record{"标题", "歌手", "专集", "2005", "其他", "[00:01]一\r\n\r\n[00:02]二"};
    editor.SetFields(record);
    prompts.saveAnswer = "D:\\导出.QGC";
    EXPECT_TRUE(editor.ExportQgc());
    EXPECT_EQ(fs.files["D:\\导出.QGC"],
              Gbk("[文件信息]\r\n说明=这是“Lumora”的媒体信息文件\r\n版本=1.2.3\r\n\r\n"
                  "[媒体信息]\r\n标题=标题\r\n歌手=歌手\r\n专集=专集\r\n年代=2005\r\n其他=其他\r\n\r\n"
                  "[媒体歌词]\r\n行数=3\r\n歌词1=[00:01]一\r\n歌词2=\r\n歌词3=[00:02]二\r\n"));
    // Exported over a file of its own, the keys the export does not write stay.
    fs.files["D:\\导出.QGC"] = Gbk("[歌曲]\r\n评分=5\r\n[媒体信息]\r\n标题=旧\r\n来源=CD\r\n");
    EXPECT_TRUE(editor.ExportQgc());
    const std::string merged = fs.files["D:\\导出.QGC"];
    for (const char* kept : {"[歌曲]\r\n评分=5\r\n", "来源=CD\r\n", "标题=标题\r\n", "歌词3=[00:02]二\r\n"}) {
        EXPECT_NE(merged.find(Gbk(kept)), std::string::npos) << kept;
    }
    editor.SetFields({});
    prompts.openAnswer = "D:\\导出.QGC";
    EXPECT_TRUE(editor.ImportQgc());
    EXPECT_EQ(view.shown.back(), record);
    prompts.openAnswer = "D:\\none.QGC";
    EXPECT_FALSE(editor.ImportQgc());
    fs.failWrites = true;
    EXPECT_FALSE(editor.ExportQgc());
    editor.SetFields({"😀", "", "", "", "", ""});  // refused before anything is written
    EXPECT_FALSE(editor.ExportQgc());
}

}  // namespace
}  // namespace lumora
