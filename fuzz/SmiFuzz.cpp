// Any bytes as an SMI file: one entry per sync line in both lists, within the limit, every stamp readable.
#include "FuzzChecks.h"
#include "mediainfo/SmiReader.h"

LUMORA_FUZZ(input) {
    for (const bool correct : {false, true}) CheckLyricLists(ParseSmi(input, correct), false);
}
