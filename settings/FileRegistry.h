#pragma once
// The registry of a portable Lumora: every key and value it writes lives in one text file in the data
// folder beside the program, so a copy on a USB stick keeps its options on any machine and leaves
// nothing in the machine's registry. Keys and names match without regard to ASCII case, as in the
// registry. Each change is written through at once, atomically; a file that exists but cannot be read
// is never written over.
//
// The file, UTF-8, lines ended by CR LF:
//   [HKEY_CURRENT_USER\SOFTWARE\Tavrinsoft\TavrinPlayer\setup]
//   L44=b:31
// A value line is the name, "=", a kind letter (b binary, t text, n number, o other), ":" and the data's
// bytes in hex; the name ends at the line's last "=". Lines that do not parse are dropped.
#include <string>
#include <string_view>
#include <vector>

#include "ports/Registry.h"

namespace lumora {

class FileSystem;

class FileRegistry final : public Registry {
public:
    FileRegistry(FileSystem& files, std::string path);

    long CreateKey(RegistryRoot root, const std::string& subKey) override;
    long WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                     std::string_view bytes) override;
    long WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                   std::string_view utf8) override;
    long WriteNumber(RegistryRoot root, const std::string& subKey, const std::string& name,
                     std::uint32_t number) override;
    long Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) override;
    long ListKey(RegistryRoot root, const std::string& subKey, KeyListing& listing) override;
    long DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) override;
    long DeleteKey(RegistryRoot root, const std::string& subKey) override;

    // The file's text for these keys, and the keys read back from such a text.
    struct Key {
        std::string path;  // root name, "\", sub-key
        std::vector<std::pair<std::string, RegistryValue>> values;
    };
    static std::string Format(const std::vector<Key>& keys);
    static std::vector<Key> Parse(std::string_view text);

private:
    long Write(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue value);
    // Reads the file again (another Lumora may have changed it); false when it is there but unreadable.
    bool Reload();
    long Save();
    Key* FindKey(const std::string& path);

    FileSystem& files_;
    std::string path_;
    std::vector<Key> keys_;
};

}  // namespace lumora
