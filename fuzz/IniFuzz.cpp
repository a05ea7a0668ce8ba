// Any bytes as an INI file: reading never fails, and a key we set reads back while every other line stays.
#include <vector>

#include "FuzzChecks.h"
#include "settings/IniDocument.h"

LUMORA_FUZZ(input) {
    const auto Lines = [](std::string_view bytes) {
        std::vector<std::string_view> lines;
        for (std::size_t end; (end = bytes.find("\r\n")) != std::string_view::npos; bytes.remove_prefix(end + 2)) {
            lines.push_back(bytes.substr(0, end));
        }
        return lines;
    };
    IniDocument doc{std::string(input)};
    const std::string before = doc.Bytes();
    if (!doc.Set("设置", "临时", "C:\\音乐\\a.mp3")) return Check(doc.Bytes() == before);
    const std::string after = doc.Bytes();
    Check(IniDocument(after).Get("设置", "临时") == "C:\\音乐\\a.mp3");
    // Past the lines both share at the start and the end: the key's own line replaced, or the key added
    // (with its section and a blank line before it when the section is new).
    const auto a = Lines(before), b = Lines(after);
    std::size_t head = 0, tail = 0;
    while (head < a.size() && head < b.size() && a[head] == b[head]) ++head;
    while (tail < a.size() - head && tail < b.size() - head && a[a.size() - 1 - tail] == b[b.size() - 1 - tail]) ++tail;
    const std::size_t removed = a.size() - head - tail, added = b.size() - head - tail;
    Check(removed <= 1 && added >= removed && added - removed <= 3 && (removed == 0 || added == 1));
}
