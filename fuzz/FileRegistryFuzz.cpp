// Any portable registry file: it loads, what is written over it reads back, and the file written then
// reads as it was written.
#include "FuzzChecks.h"
#include "settings/FileRegistry.h"

LUMORA_FUZZ(input) {
    const std::string formatted = FileRegistry::Format(FileRegistry::Parse(input));
    Check(FileRegistry::Format(FileRegistry::Parse(formatted)) == formatted);
    test::FakeFileSystem fs;
    fs.files["E:\\Data\\registry.txt"] = std::string(input);
    FileRegistry reg(fs, "E:\\Data\\registry.txt");
    RegistryValue value;
    reg.Read(RegistryRoot::CurrentUser, "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", "L44", value);
    Check(reg.CreateKey(RegistryRoot::CurrentUser, "K") == regerr::kSuccess);
    Check(reg.WriteBinary(RegistryRoot::CurrentUser, "K", "v", input) == regerr::kSuccess);
    FileRegistry again(fs, "E:\\Data\\registry.txt");
    Check(again.Read(RegistryRoot::CurrentUser, "k", "V", value) == regerr::kSuccess && value.data == input);
}
