#pragma once
// One INI file in memory, the way the Windows private-profile functions read and write it,
// but always in code page 936: the file's lines are kept as their bytes, so sections Lumora
// does not touch come back out exactly as they went in.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

class IniDocument {
public:
    IniDocument() = default;
    explicit IniDocument(std::string_view fileBytes);

    // The value as UTF-8, with surrounding blanks and one pair of matching quotes removed and
    // the characters of code 0 and 1 dropped. Section and key match without regard to ASCII case.
    std::optional<std::string> Get(std::string_view section, std::string_view key) const;

    // Sets or adds the key. False (and nothing changed) when a text cannot be written: a line
    // break, a name with "=" or "]", or a character code page 936 cannot hold.
    bool Set(std::string_view section, std::string_view key, std::string_view value);

    // The file's bytes, lines ended by CR LF.
    std::string Bytes() const;

private:
    struct Located {
        std::optional<size_t> sectionLine;  // the "[section]" line
        size_t sectionEnd = 0;              // one past the section's last key line
        std::optional<size_t> keyLine;
    };
    Located Find(std::string_view section, std::string_view key) const;

    std::vector<std::string> lines_;  // code page 936 bytes, without line ends
};

}  // namespace lumora
