#!/usr/bin/env bash
# Makes small MPEG audio files with lame and ffmpeg and records what ffprobe says about each one, so that
# the frame parser's figures are checked against an independent reader. Run by the build; writes only into
# the folder it is given. Usage: MakeMpegFixtures.sh OUTPUT_DIR
set -euo pipefail
mkdir -p "$1"
cd "$1"
for tool in sox lame ffmpeg ffprobe; do
    # The build goes on; the tests that need the files fail and name the missing tool.
    command -v "$tool" >/dev/null || { echo "missing $tool" >expectations.txt; exit 0; }
done
rm -f expectations.tmp
# name | encoder command (input and output appended) | rate.channels of a two-second two-tone sine | mode | CRC
for entry in \
    "l3_cbr128_44k_stereo.mp3|lame --quiet -b 128 -m s|44100.2|0|0" \
    "l3_cbr64_44k_mono_crc.mp3|lame --quiet -p -b 64 -m m|44100.1|3|1" \
    "l3_cbr96_32k_dual.mp3|lame --quiet -b 96 -m d|32000.2|2|0" \
    "l3_mpeg2_22k_stereo_64.mp3|lame --quiet -b 64 -m s|22050.2|0|0" \
    "l3_mpeg2_24k_vbr.mp3|lame --quiet -V 5 -m j|24000.2|1|0" \
    "l3_mpeg2_16k_mono_crc.mp3|lame --quiet -p -b 24 -m m|16000.1|3|1" \
    "l3_mpeg25_8k_mono_16.mp3|lame --quiet -b 16 -m m|8000.1|3|0" \
    "l3_mpeg25_11k_mono_vbr.mp3|lame --quiet -V 6 -m m|11025.1|3|0" \
    "l2_48k_mono_160.mp2|ffmpeg -c:a mp2 -b:a 160k -ac 1|48000.2|3|0" \
    "l2_44k_stereo_320.mp2|ffmpeg -c:a mp2 -b:a 320k|44100.2|0|0" \
    "l2_mpeg2_22k_stereo_64.mp2|ffmpeg -c:a mp2 -b:a 64k|22050.2|0|0"; do
    IFS='|' read -r name command input mode crc <<<"$entry"
    [[ -f $input.wav ]] || sox -n -r "${input%.*}" -c "${input#*.}" -b 16 "$input.wav" synth 2 sine 440 sine 660 gain -3
    if [[ $command == ffmpeg* ]]; then
        ffmpeg -loglevel error -y -i "$input.wav" ${command#ffmpeg } -f mp2 "$name"
    else
        $command "$input.wav" "$name"
    fi
    probe=$(ffprobe -v error -count_frames -count_packets -select_streams a:0 \
        -show_entries stream=codec_name,nb_read_frames,nb_read_packets,sample_rate,channels,bit_rate,duration \
        -of default=noprint_wrappers=1 "$name" 2>/dev/null | tr '\n' ' ')
    echo "file=$name mode=$mode crc=$crc $probe" >>expectations.tmp
done
# Windows Media and QuickTime files as ffmpeg writes them, for the head checks that must let them through.
ffmpeg -loglevel error -y -f lavfi -i sine=frequency=440:sample_rate=22050 -t 1 -c:a wmav2 made.wma
ffmpeg -loglevel error -y -f lavfi -i testsrc=size=64x48:rate=10 -t 1 -c:v wmv2 made.wmv
ffmpeg -loglevel error -y -f lavfi -i testsrc=size=64x48:rate=10 -f lavfi -i sine -t 1 -c:v mpeg4 -c:a aac made.mov
rm -f ./*.wav
mv expectations.tmp expectations.txt
