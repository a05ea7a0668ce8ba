// Saving the information block and finding a file's lyrics touch only the file's tail: a 200 MB file must
// cost what a 1 MB file costs, close to the floor of writing (or reading) 4 KB at a file's end. Real files
// in the temporary folder (sparse, with some audio-like bytes at the end), through the standard library.
// Also the lyrics window's choice of lines on every tick for a long lyric.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "mediainfo/InfoBlock.h"
#include "mediainfo/LyricsLookup.h"
#include "mediainfo/LyricsTiming.h"
#include "HostFileSystem.h"

namespace {

using namespace lumora;
namespace fsys = std::filesystem;

test::HostFileSystem& Fs() {
    static test::HostFileSystem fs(fsys::temp_directory_path().string());
    return fs;
}

// A media file of `megabytes` MB, made once per run.
std::string MediaFile(long long megabytes) {
    const fsys::path folder = fsys::temp_directory_path() / "lumora-info-bench";
    fsys::create_directories(folder);
    const std::string path = (folder / ("media" + std::to_string(megabytes) + ".mp3")).string();
    const long long size = megabytes * 1024 * 1024;
    if (Fs().FileSize(path) < size) {
        { std::ofstream create(path, std::ios::binary | std::ios::trunc); }
        fsys::resize_file(path, static_cast<std::uintmax_t>(size));
        Fs().WriteFilePart(path, size - 65536, std::string(65536, '\x55'));
    }
    return path;
}

std::string Lyrics(int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) {
        if (i > 0) text += "\r\n";
        text += "[" + FormatStamp(i * 2) + "]第" + std::to_string(i) + "句歌词";
    }
    return text;
}

void BM_SaveInfoBlock(benchmark::State& state) {
    const std::string path = MediaFile(state.range(0));
    const std::string field = BuildLyricsField(Lyrics(40));
    const Id3v1Tag tag{"标题", "歌手", "专集", "2005", "其他"};
    for (auto _ : state) {
        if (WriteInfoBlock(Fs(), path, tag, field) != InfoWriteResult::Written) state.SkipWithError("write failed");
    }
}
BENCHMARK(BM_SaveInfoBlock)->Arg(1)->Arg(200)->Unit(benchmark::kMicrosecond);

void BM_FloorWrite4KAtEnd(benchmark::State& state) {
    const std::string path = MediaFile(state.range(0));
    const long long size = Fs().FileSize(path);
    const std::string bytes(4096, '\x55');
    for (auto _ : state) benchmark::DoNotOptimize(Fs().WriteFilePart(path, size - 4096, bytes));
}
BENCHMARK(BM_FloorWrite4KAtEnd)->Arg(1)->Arg(200)->Unit(benchmark::kMicrosecond);

void BM_LookupEmbeddedLyrics(benchmark::State& state) {
    const std::string path = MediaFile(state.range(0));
    WriteInfoBlock(Fs(), path, {"标题", "", "", "", ""}, BuildLyricsField(Lyrics(40)));
    for (auto _ : state) benchmark::DoNotOptimize(LookupLyrics(Fs(), path));
}
BENCHMARK(BM_LookupEmbeddedLyrics)->Arg(1)->Arg(200)->Unit(benchmark::kMicrosecond);

// No block in the file, no record, no QGC: the LRC beside it.
void BM_LookupLrcBeside(benchmark::State& state) {
    const fsys::path folder = fsys::temp_directory_path() / "lumora-info-bench";
    fsys::create_directories(folder);
    const std::string path = (folder / "plain.mp3").string();
    Fs().WriteFileAtomic(path, std::string(65536, '\x55'));
    Fs().WriteFileAtomic((folder / "plain.lrc").string(), Lyrics(200));
    for (auto _ : state) benchmark::DoNotOptimize(LookupLyrics(Fs(), path));
}
BENCHMARK(BM_LookupLrcBeside)->Unit(benchmark::kMicrosecond);

void BM_FloorReadLast4K(benchmark::State& state) {
    const std::string path = MediaFile(state.range(0));
    const long long size = Fs().FileSize(path);
    for (auto _ : state) benchmark::DoNotOptimize(Fs().ReadFilePart(path, size - 4096, 4096));
}
BENCHMARK(BM_FloorReadLast4K)->Arg(1)->Arg(200)->Unit(benchmark::kMicrosecond);

// One progress tick of the lyrics window for a 2,000-line lyric, the elapsed time moving on.
void BM_ChooseLinesPerTick(benchmark::State& state) {
    const TimedLyrics lyrics = BuildTimedLyrics(Lyrics(2000));
    long long p = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ChooseDisplayLines(lyrics, p, 20));
        p = (p + 1) % 4000;
    }
}
BENCHMARK(BM_ChooseLinesPerTick);

void BM_BuildTimedLyrics2000(benchmark::State& state) {
    const std::string text = Lyrics(2000);
    for (auto _ : state) benchmark::DoNotOptimize(BuildTimedLyrics(text));
}
BENCHMARK(BM_BuildTimedLyrics2000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
