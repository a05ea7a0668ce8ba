// Any bytes as a skin description: reading never fails, every number stays in its range, and each ignored
// line is a line of the input.
#include "FuzzChecks.h"
#include "common/SkinDescription.h"

LUMORA_FUZZ(input) {
    const ParsedSkin parsed = ParseSkin(input);
    const SkinLook& l = parsed.look;
    Check(l.buttonRadius >= 0 && l.buttonRadius <= 20 && l.buttonGloss >= 0 && l.buttonGloss <= 100);
    Check(l.buttonEdgeWidth >= 0 && l.buttonEdgeWidth <= 3 && l.displayRadius >= 0 && l.displayRadius <= 30);
    Check(l.titleWeight >= 100 && l.titleWeight <= 900 && l.textWeight >= 100 && l.textWeight <= 900);
    for (const SkinColour c : {l.panel, l.text, l.accent, l.background.from, l.background.to}) Check(c <= 0xFFFFFF);
    for (const std::string& line : parsed.ignored) Check(!line.empty() && input.find(line) != std::string_view::npos);
}
