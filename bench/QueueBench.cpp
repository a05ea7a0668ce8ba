// Portable costs of filling the queue from a large folder, against just listing it.
#include <benchmark/benchmark.h>

#include "playlist/MediaTest.h"
#include "playlist/QueueController.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace {

using namespace lumora;

// 5,000 files, a tenth of them media.
std::vector<std::string> FolderNames() {
    std::vector<std::string> names;
    for (int i = 0; i < 5000; ++i) {
        names.push_back("file " + std::to_string(i) + (i % 10 == 0 ? ".mp3" : ".txt"));
    }
    return names;
}

void BM_ListOnly(benchmark::State& state) {
    test::FakeFileSystem fs;
    fs.listingOrder["D:\\big"] = FolderNames();
    fs.folders.push_back("D:\\big");
    for (auto _ : state) benchmark::DoNotOptimize(fs.ListFiles("D:\\big"));
}
BENCHMARK(BM_ListOnly);

void BM_MediaTestOverFolder(benchmark::State& state) {
    const auto names = FolderNames();
    for (auto _ : state) {
        int media = 0;
        for (const auto& n : names) media += IsMediaFile(n);
        benchmark::DoNotOptimize(media);
    }
}
BENCHMARK(BM_MediaTestOverFolder);

void BM_FillQueueFromFolder(benchmark::State& state) {
    test::FakeFileSystem fs;
    for (const auto& n : FolderNames()) fs.files["D:\\big\\" + n] = "";
    fs.listingOrder["D:\\big"] = FolderNames();
    test::FakePrompts prompts;
    test::NullQueueView view;
    for (auto _ : state) {
        QueueController queue(prompts, fs, view, view);
        benchmark::DoNotOptimize(queue.AddPending({"D:\\big"}));
    }
}
BENCHMARK(BM_FillQueueFromFolder);

}  // namespace

BENCHMARK_MAIN();
