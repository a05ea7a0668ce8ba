#pragma once
// The system's own decoders crash the whole program on some malformed headers (a WAVE format block
// with nonsense counts, an icon directory larger than its file). Those headers are refused before a
// file reaches them: such a file takes the cannot-play path instead.
#include <string>
#include <string_view>

namespace lumora {

class FileSystem;

// Whether a file with this name and these first bytes may be handed to the system. Formats that are
// not checked pass; `size` is the whole file's.
bool HeadLooksSound(std::string_view name, std::string_view head, long long size);
// The same for a file on disk, reading at most its first 64 KiB; MPEG audio names must hold MPEG
// audio frames.
bool FileHeadLooksSound(FileSystem& fs, const std::string& path);

}  // namespace lumora
