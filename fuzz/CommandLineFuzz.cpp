// Any command line: start-up never fails on it, hands it over or opens it, and the pending
// drop list it makes splits back into the path it came from.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "app/Startup.h"
#include "settings/IniFiles.h"
#include "settings/RegistryWrapper.h"
#include "support/Fakes.h"

using namespace lumora;

namespace {

class EchoLookup : public PathLookup {
public:
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
    const bool secondInstance = (data[0] & 1) != 0;
    const std::string line(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string tail = CommandTail(line);
    if (tail.size() > line.size()) std::abort();

    test::FakeFileSystem fs;
    fs.files["C:\\Lumora\\tooltip.dll"] = "MZ";
    fs.files["D:\\a.mp3"] = "";
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper wrapper(reg, prompts);
    IniFiles ini(fs);
    EchoLookup lookup;
    Probe probe;
    probe.running = secondInstance;
    const StartupResult r = RunStartup({fs, ini, wrapper, probe, lookup}, {OsPlatform::NT, 5, 1}, tail, "C:\\Lumora");
    if (r.marker.empty()) std::abort();
    if (r.outcome == StartupOutcome::HandedOver && !secondInstance) std::abort();

    // What a second instance wrote is what the first reads back (the INI loses only the
    // surrounding blanks and one pair of quotation marks, as every private-profile reader does).
    (void)ReadScratchValue(ini);

    if (const auto path = ResolveArgument(tail, fs)) {
        if (!fs.FileExists(*path) && !fs.FolderExists(*path)) std::abort();
        const auto back = ParsePendingDropList(MakePendingDropList({*path}));
        if (back.size() != 1 || back[0] != *path) std::abort();
    }
    (void)ParsePendingDropList(tail);
    return 0;
}
