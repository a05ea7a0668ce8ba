// Any bytes as an INI file: reading never fails, and a key we set reads back while every
// other line stays as it was.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "settings/IniDocument.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    lumora::IniDocument doc(bytes);
    (void)doc.Get("设置", "临时");
    (void)doc.Get("书签", "1");
    const std::string before = doc.Bytes();
    if (doc.Set("设置", "临时", "C:\\音乐\\a.mp3")) {
        const lumora::IniDocument again(doc.Bytes());
        if (again.Get("设置", "临时") != "C:\\音乐\\a.mp3") std::abort();
        if (doc.Bytes().size() < before.size()) std::abort();  // nothing of the file was lost
    }
    return 0;
}
