// Any command line: start-up never fails on it, hands it over only to a running instance, and the argument
// it opens exists and survives the pending drop list. The first byte's low bit: another instance runs; its
// next bit: it answers. The same bytes as a hand-off message from another program decode safely.
#include "FuzzChecks.h"
#include "app/HandOff.h"
#include "app/Startup.h"
#include "settings/IniFiles.h"

LUMORA_FUZZ(input) {
    if (input.empty()) return;
    struct Probe : InstanceProbe {
        bool AnotherInstanceRuns() override { return running; }
        bool HandOver(std::string_view) override { return answers; }
        void PointToSlot() override {}
        bool running = false, answers = false;
    } probe;
    probe.running = (input[0] & 1) != 0;
    probe.answers = (input[0] & 2) != 0;
    if (const auto message = DecodeHandOff(static_cast<unsigned char>(input[0]) % 5, input.substr(1))) {
        Check(EncodeHandOff(*message) == input.substr(1));
    }
    const std::string tail = CommandTail(input.substr(1));
    Ports p;
    p.fs.files = {{"C:\\Lumora\\tooltip.dll", "MZ"}, {"D:\\a.mp3", ""}};
    IniFiles ini(p.fs);
    const StartupResult r = RunStartup({p.fs, ini, p.wrapper, probe}, {OsPlatform::NT, 5, 1}, tail, "C:\\Lumora");
    Check(!r.marker.empty() && (r.outcome != StartupOutcome::HandedOver || probe.running));
    if (const auto path = ResolveArgument(tail, p.fs)) {
        Check(p.fs.FileExists(*path) || p.fs.FolderExists(*path));
    }
}
