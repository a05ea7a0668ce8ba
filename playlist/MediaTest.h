#pragma once
// The one test of whether a file name is a playable medium, used by everything that adds or filters files.
#include <string_view>

namespace lumora {

// The media extensions, ";" between the items. Kept exactly as the player has always had it: "mpeg", "aifc",
// "aiff" and "mpga" have no leading dot, and they, ".midi" and ".rmvb" can never match (see IsMediaFile).
inline constexpr std::string_view kMediaExtensionList =
    ".avi;.mpg;.dat;mpeg;.mp3;.mp2;.mp1;.wav;.aif;aifc;aiff;.mv1;.mov;.mpa;.snd;.mpm;.mpv;.enc;.mid;.rmi;.midi;"
    ".vob;.wma;.wax;.wmv;.wvx;.asf;.asx;.wmx;.wmp;.wpl;.qt;.au;.swf;.spl;mpga;.bmp;.dib;.jpg;.wmf;.emf;.gif;"
    ".ico;.cur;.rm;.rmvb;.ra;.cda";

// True when `name` (a bare file name, a full path or a list line such as "001-(song.mp3)") is a medium.
// Only the last four characters count (the four before the final ")" of a list line), lower-cased; the piece
// after their last "." must be an item of kMediaExtensionList. So ".qt" and ".mp3" match, ".mpeg" never does.
bool IsMediaFile(std::string_view name);

}  // namespace lumora
