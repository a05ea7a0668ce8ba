// Any bytes as an INI file: reading never fails, and a key we set reads back with nothing of the file lost.
#include "FuzzChecks.h"
#include "settings/IniDocument.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    lumora::IniDocument doc{std::string(lumora::fuzz::Bytes(data, size))};
    (void)doc.Get("书签", "1");
    const std::string before = doc.Bytes();
    if (doc.Set("设置", "临时", "C:\\音乐\\a.mp3")) {
        lumora::fuzz::Check(lumora::IniDocument(doc.Bytes()).Get("设置", "临时") == "C:\\音乐\\a.mp3");
        lumora::fuzz::Check(doc.Bytes().size() >= before.size());
    }
    return 0;
}
