// Any command line: start-up never fails on it, hands it over only to a running instance, and the argument
// it opens exists and survives the pending drop list. The first byte's low bit: another instance runs.
#include "FuzzChecks.h"
#include "app/Startup.h"
#include "settings/IniFiles.h"
#include "settings/RegistryWrapper.h"
#include "support/Fakes.h"

using namespace lumora;
using fuzz::Check;

namespace {

struct EchoLookup : PathLookup {
    std::optional<std::string> NameOnDisk(const std::string& path) override {
        if (path == "D:\\a.mp3" || path == "d:\\A.MP3") return std::string("D:\\a.mp3");
        return std::nullopt;
    }
};

struct Probe : InstanceProbe {
    bool running = false;
    bool AnotherInstanceRuns() override { return running; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const std::string line(fuzz::Bytes(data + 1, size - 1));
    const std::string tail = CommandTail(line);
    Check(tail.size() <= line.size());

    test::FakeFileSystem fs;
    fs.files["C:\\Lumora\\tooltip.dll"] = "MZ";
    fs.files["D:\\a.mp3"] = "";
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper wrapper(reg, prompts);
    IniFiles ini(fs);
    EchoLookup lookup;
    Probe probe;
    probe.running = (data[0] & 1) != 0;
    const StartupResult r = RunStartup({fs, ini, wrapper, probe, lookup}, {OsPlatform::NT, 5, 1}, tail, "C:\\Lumora");
    Check(!r.marker.empty() && (r.outcome != StartupOutcome::HandedOver || probe.running));
    (void)ReadScratchValue(ini);
    if (const auto path = ResolveArgument(tail, fs)) {
        Check(fs.FileExists(*path) || fs.FolderExists(*path));
        Check(ParsePendingDropList(MakePendingDropList({*path})) == std::vector<std::string>{*path});
    }
    (void)ParsePendingDropList(tail);
    return 0;
}
