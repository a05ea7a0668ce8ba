// Any bytes as the player's INI file: the user's tip texts never break a line in the middle of a character,
// never carry a control character but the line breaks they ask for, and never grow past their limit.
#include "FuzzChecks.h"
#include "settings/TipOverrides.h"

LUMORA_FUZZ(input) {
    const int ids[] = {1, 1003, 1101};
    const TipOverrides tips(input, ids);
    for (int id : ids) {
        const std::string_view text = tips.For(id, "内置");
        Check(!text.empty());
        std::size_t chars = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto c = static_cast<unsigned char>(text[i]);
            if ((c & 0xC0) != 0x80) ++chars;
            Check(c >= 0x20 || (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ||
                  (c == '\n' && i > 0 && text[i - 1] == '\r'));
        }
        Check(chars <= 2 * kMaxTipChars);  // a line break counts once and is two characters
        Check((static_cast<unsigned char>(text.back()) & 0xC0) != 0xC0);  // no sequence cut open at the end
        Check(tips.For(id, "内置", true) == "内置");
    }
}
