// Any bytes as an INI file: reading never fails, and a key we set reads back with nothing of the file lost.
#include "FuzzChecks.h"
#include "settings/IniDocument.h"

LUMORA_FUZZ(input) {
    IniDocument doc{std::string(input)};
    const std::string before = doc.Bytes();
    if (doc.Set("设置", "临时", "C:\\音乐\\a.mp3")) {
        Check(IniDocument(doc.Bytes()).Get("设置", "临时") == "C:\\音乐\\a.mp3" && doc.Bytes().size() >= before.size());
    }
}
