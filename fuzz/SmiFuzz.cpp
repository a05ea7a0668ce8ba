// Any bytes as an SMI file: one entry per sync line in both lists, within the limit, every stamp readable.
#include "FuzzChecks.h"
#include "mediainfo/SmiReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    for (const bool correct : {false, true}) lumora::fuzz::CheckLyricLists(lumora::ParseSmi(lumora::fuzz::Bytes(data, size), correct), false);
    return 0;
}
