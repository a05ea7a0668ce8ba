// Portable costs of the list file and the music library, each against a floor on the same fake file system: loading
// a 999-name list with filtering against 999 existence checks of the same files, saving it, and adding 100 files to
// the library against 100 plain copies. The fake keeps files in memory, so these figures are Lumora's own overhead
// (parsing, CP936 conversion, the media test, the frame probe, the queue's lines), not disk time.
#include <benchmark/benchmark.h>

#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"
#include "playlist/MusicLibrary.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"
#include "support/NullViews.h"

namespace {

using namespace lumora;

const std::string kFolder = "G:\\音乐\\合集";

// 999 names, a third of them MP3 files holding real frames, the rest Windows Media files.
std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int i = 0; i < 999; ++i) names.push_back("歌曲 " + std::to_string(i) + (i % 3 == 0 ? ".mp3" : ".wma"));
    return names;
}

void AddFiles(test::FakeFileSystem& fs, const std::vector<std::string>& names) {
    const std::string mp3 = test::MpegFrames(8);
    for (const auto& n : names) fs.files[JoinPath(kFolder, n)] = n.ends_with(".mp3") ? mp3 : std::string(64, 'w');
}

void BM_ExistenceChecksFloor(benchmark::State& state) {
    test::FakeFileSystem fs;
    const auto names = Names();
    AddFiles(fs, names);
    for (auto _ : state) {
        int found = 0;
        for (const auto& n : names) found += fs.FileExists(JoinPath(kFolder, n));
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(BM_ExistenceChecksFloor);

void BM_LoadListWithFiltering(benchmark::State& state) {
    test::FakeFileSystem fs;
    const auto names = Names();
    AddFiles(fs, names);
    fs.drives['G'] = DriveKind::Removable;  // a list off the fixed disks is always filtered
    fs.files["C:\\l.qlb"] = EncodeListFile(ListKind::Main, true, kFolder, names);
    test::FakePrompts prompts;
    SettingsStore settings;
    test::NullQueueView view;
    test::NullFilterProgress progress;
    QueueController queue(prompts, fs, view, view);
    ListFileController lists(prompts, fs, settings, queue, progress);
    for (auto _ : state) benchmark::DoNotOptimize(lists.LoadListFile("C:\\l.qlb"));
}
BENCHMARK(BM_LoadListWithFiltering);

void BM_SaveListWithFiltering(benchmark::State& state) {
    test::FakeFileSystem fs;
    const auto names = Names();
    AddFiles(fs, names);
    test::FakePrompts prompts;
    prompts.saveAnswer = "C:\\saved";
    SettingsStore settings;
    test::NullQueueView view;
    test::NullFilterProgress progress;
    QueueController queue(prompts, fs, view, view);
    ListFileController lists(prompts, fs, settings, queue, progress);
    lists.ReplaceQueue(kFolder, names, false);
    for (auto _ : state) {
        prompts.messages.clear();
        benchmark::DoNotOptimize(lists.SaveListFile());
    }
}
BENCHMARK(BM_SaveListWithFiltering);

void BM_EncodeAndParseOnly(benchmark::State& state) {
    const auto names = Names();
    for (auto _ : state) benchmark::DoNotOptimize(ParseListFile(EncodeListFile(ListKind::Main, true, kFolder, names)));
}
BENCHMARK(BM_EncodeAndParseOnly);

constexpr int kCopies = 100;

test::FakeFileSystem CopySource() {
    test::FakeFileSystem fs;
    for (int i = 0; i < kCopies; ++i) fs.files["E:\\in\\" + std::to_string(i) + ".mp3"] = std::string(4096, 'a');
    fs.folders.push_back("D:\\库");
    return fs;
}

void BM_PlainCopyFloor(benchmark::State& state) {
    const test::FakeFileSystem source = CopySource();
    for (auto _ : state) {
        state.PauseTiming();
        test::FakeFileSystem fs = source;
        state.ResumeTiming();
        for (int i = 0; i < kCopies; ++i) {
            const std::string name = std::to_string(i) + ".mp3";
            benchmark::DoNotOptimize(fs.CopyNewFile("E:\\in\\" + name, "D:\\库\\" + name));
        }
    }
}
BENCHMARK(BM_PlainCopyFloor);

void BM_AddAllToLibrary(benchmark::State& state) {
    const test::FakeFileSystem source = CopySource();
    test::FakePrompts prompts;
    test::FakeRegistry registry;
    registry.Put(RegistryRoot::CurrentUser, "SOFTWARE\\Tavrinsoft\\TavrinPlayer", "我的音乐库",
                 {RegistryValue::Kind::Text, "D:\\库\\"});
    SettingsStore settings;
    test::NullQueueView view;
    test::NullFilterProgress progress;
    std::vector<std::string> names;
    for (int i = 0; i < kCopies; ++i) names.push_back(std::to_string(i) + ".mp3");
    for (auto _ : state) {
        state.PauseTiming();
        test::FakeFileSystem fs = source;
        QueueController queue(prompts, fs, view, view);
        ListFileController lists(prompts, fs, settings, queue, progress);
        lists.ReplaceQueue("E:\\in", names, false);
        test::RecordingCopyView copyView;
        MusicLibrary library(prompts, fs, registry, settings, queue, lists, copyView);
        state.ResumeTiming();
        benchmark::DoNotOptimize(library.AddAllToLibrary());
    }
}
BENCHMARK(BM_AddAllToLibrary);

}  // namespace

BENCHMARK_MAIN();
