// Malformed files of every kind Lumora reads (made by make-bad-files.py), opened one after another
// through the real program: after each it still answers, shows its message or nothing, and has
// changed no byte of anything it only opened.
#include <map>

#include "e2e/Driver.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

std::map<fs::path, std::string> Contents(const fs::path& folder) {
    std::map<fs::path, std::string> all;
    for (const auto& e : fs::recursive_directory_iterator(folder)) {
        if (e.is_regular_file()) all[e.path()] = ReadBytes(e.path());
    }
    return all;
}

HWND BoxOf(DWORD pid) {
    for (HWND w : AllWindows(L"#32770")) {
        DWORD owner = 0;
        GetWindowThreadProcessId(w, &owner);
        // A box is taken once it shows its title: not while it is still being made.
        if (owner == pid && IsWindowVisible(w) && !Text(w).empty()) return w;
    }
    return nullptr;
}

class BadFilesE2E : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        // The file dialog takes no "/" in a typed path.
        folder_ = fs::path(Widen(Env(L"LUMORA_BAD_FILES"))).make_preferred();
        ASSERT_FALSE(folder_.empty()) << "run through tests/e2e/run-bad-files.sh";
    }

    // The main window answers a message in time.
    bool Answers() { return SendMessageTimeoutW(lumora_.main, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 5000, nullptr) != 0; }
    void ExpectWell(const std::string& after) {
        EXPECT_FALSE(lumora_.process.ExitCode(0)) << "ended after " << after;
        EXPECT_TRUE(Answers()) << "no answer after " << after;
    }

    // Logs a box Lumora shows after `after` and answers it: `yes` to a question, OK to a message.
    void Dismiss(HWND box, const std::string& after, int yes = IDYES) {
        std::printf("%s: %s: %s\n", after.c_str(), Text(box).c_str(), BoxText(box).c_str());
        Click(box, GetDlgItem(box, IDYES) ? yes : IDOK);
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); })) << "box stays after " << after;
    }

    // Answers every box Lumora shows until none comes for a moment: "no" to "无法播放" (it plays
    // the entry before the first: nothing), "yes" to other questions.
    void AnswerBoxes(const std::string& after) {
        for (DWORD quiet = GetTickCount(); GetTickCount() - quiet < 400;) {
            HWND box = BoxOf(lumora_.process.Id());
            if (!box) {
                Sleep(20);
                continue;
            }
            Dismiss(box, after, Text(box) == "无法播放" ? IDNO : IDYES);
            ExpectWell(after);
            quiet = GetTickCount();
        }
    }

    // Waits until Lumora has opened `name`: it plays it, or asks about it. Any other box is logged
    // and answered. False when Lumora neither does so in time nor answers a message.
    bool Reached(const std::string& name, HWND& question) {
        question = nullptr;
        const bool reached = WaitFor(
            [&] {
                HWND box = BoxOf(lumora_.process.Id());
                if (box && Text(box) == "无法播放" && BoxText(box).rfind(name, 0) == 0) question = box;
                if (box && !question && Text(box) != "无法播放") Dismiss(box, name);
                return question || lumora_.Title() == name || lumora_.process.ExitCode(0);
            },
            10000);
        return reached && Answers();
    }

    // Lumora on one folder in repeat-one mode (so that an end of file never skips an entry): each
    // entry in turn either plays (then "next") or brings the cannot-play question that names it
    // (answered "next"). After a hang Lumora starts again and goes on with the entry after it.
    void WalkFolder(const char* decoder, const fs::path& folder) {
        ForgetSettings();
        StoreOption("L16", "1");
        StoreOption("L25", decoder);
        std::size_t count = 0;  // the folder's entries, read once a start
        for (size_t i = 0; !HasFatalFailure(); ++i) {
            if (lumora_.process.ExitCode(0)) {  // none runs: the first entry, or the one after a hang
                ASSERT_TRUE(lumora_.Start(Quoted(PathText(folder))));
                Click(lumora_.main, IDC_MAIN_MODE_LOOP);
                ASSERT_TRUE(WaitFor([&] { return Answers() && (count = lumora_.Lines().size()) != 0; }));
                HWND question = nullptr;
                ASSERT_TRUE(Reached(lumora_.Name(0), question) && !question) << "the first file is a playable one";
                lumora_.PlayLine(static_cast<int>(i) + 1);
            }
            if (i == count) return;
            const std::string name = lumora_.Name(i);
            HWND question = nullptr;
            const DWORD start = GetTickCount();
            if (!Reached(name, question) || lumora_.process.ExitCode(0)) {
                ADD_FAILURE() << name << " with decoder " << decoder << ": Lumora hangs or ended";
                lumora_.process.Kill();
                continue;
            }
            if (GetTickCount() - start > 1000) std::printf("%s: %lu ms\n", name.c_str(), GetTickCount() - start);
            if (question) {
                Dismiss(question, name);
            } else {
                Click(lumora_.main, IDC_MAIN_NEXT);
            }
            ++opened_;
        }
    }

    void Close() {
        PostMessageW(lumora_.main, WM_CLOSE, 0, 0);
        EXPECT_EQ(lumora_.process.ExitCode(), 0u);
        lumora_.process.Kill();  // one that hangs on closing must not take the next pass's files
    }

    fs::path folder_;
    int opened_ = 0;
};

TEST_F(BadFilesE2E, EachOpensWithoutCrashHangOrChange) {
    const auto before = Contents(folder_);
    for (const auto& [decoder, folder] : {std::pair{"0", L"mpeg"}, {"1", L"mpeg"}, {"0", L"lyrics"}, {"0", L"media"}}) {
        const DWORD t0 = GetTickCount();
        WalkFolder(decoder, folder_ / folder);
        std::printf("%ls with L25=%s: %lu s\n", folder, decoder, (GetTickCount() - t0) / 1000);
        if (!lumora_.process.ExitCode(0)) Close();
    }
    ForgetSettings();
    StoreOption("L16", "1");
    ASSERT_TRUE(lumora_.Start(""));
    // The lists, each through the open-list dialog of one running Lumora.
    for (const auto& e : fs::directory_iterator(folder_ / L"lists")) {
        const std::string name = PathText(e.path().filename());
        HWND dialog =
            AnswerFileDialog(lumora_.main, IDM_OPEN_LIST, "打开Lumora专用列表文件（*.QLB）", PathText(e.path()));
        ASSERT_NE(dialog, nullptr) << name;
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); })) << name;
        AnswerBoxes(name);
        ExpectWell(name);
        ++opened_;
    }
    Close();
    const auto after = Contents(folder_);
    for (const auto& [path, bytes] : before)
        EXPECT_TRUE(after.count(path) && after.at(path) == bytes) << PathText(path);
    EXPECT_EQ(after.size(), before.size());
    std::printf("%d files opened\n", opened_);
}

}  // namespace
}  // namespace lumora::e2e
