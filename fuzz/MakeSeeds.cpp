// Writes first inputs for the fuzz targets with Lumora's own writers, one folder a target under the folder
// given: what the writers make is what the readers meet most, and random bytes rarely get that far.
#include <filesystem>
#include <fstream>
#include <string>

#include "mediainfo/InfoBlock.h"
#include "mediainfo/QgcFile.h"
#include "playlist/ListFile.h"
#include "ports/TextCodec.h"
#include "settings/IniDocument.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace {

namespace fsys = std::filesystem;
using namespace lumora;

void Put(const fsys::path& root, const std::string& target, const std::string& name, const std::string& bytes) {
    fsys::create_directories(root / target);
    std::ofstream(root / target / name, std::ios::binary) << bytes;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const fsys::path root = argv[1];
    const MediaInfoRecord record{"标题", "歌手", "专集", "2005", "其他", "[00:01]第一行\r\n[00:02.50]second\r\n"};

    // Media files with our information block behind a few frames, as saved once and twice.
    test::FakeFileSystem fs;
    const std::string path = "D:\\a.mp3";
    fs.files[path] = test::MpegFrames(6);
    const Id3v1Tag tag{record.title, record.artist, record.album, record.year, record.comment};
    WriteInfoBlock(fs, path, tag, BuildLyricsField(record.lyrics));
    const std::string once = fs.files[path];
    WriteInfoBlock(fs, path, {"t", "", "", "05", "c"}, "");
    for (const std::string target : {"info_block", "id3v1", "mpeg_audio"}) {
        Put(root, target, "saved-once.mp3", once);
        Put(root, target, "saved-twice.mp3", fs.files[path]);
    }

    Put(root, "list_file", "main.qlb", EncodeListFile(ListKind::Main, true, "D:\\音乐", {"一.mp3", "b.wav"}));
    Put(root, "list_file", "library.qlb", EncodeListFile(ListKind::Library, false, "C:\\", {"x.mid"}));
    Put(root, "qgc", "record.qgc", BuildQgcFile(record, "1.0").value_or(""));

    IniDocument ini;
    ini.Set("设置", "临时", "D:\\音乐\\一.mp3");
    ini.Set("书签", "1", "D:\\a.mp3*12");
    Put(root, "ini", "written.ini", ini.Bytes());

    std::string saved;  // the initial options, as stored
    const SettingsStore settings;
    for (const std::string_view name : SettingsStore::SavedNames()) saved += settings.Text(name) + "\n";
    Put(root, "settings_load", "initial.txt", saved);
    Put(root, "text_codec", "chinese.txt", Utf8ToCp936("这是“Lumora”的媒体信息文件 1.0").value_or(""));
    Put(root, "command_line", "file.txt", "\x01\"D:\\音乐\\一.mp3\"");
    Put(root, "command_line", "help.txt", std::string("\0/?", 3));
    Put(root, "media_test", "names.txt", std::string("一.mp3\nb.QLB\nc.txt\nd.MP3\0\x01\x02\x03\x04", 30));
    return 0;
}
