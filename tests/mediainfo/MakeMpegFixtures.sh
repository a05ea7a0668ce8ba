#!/usr/bin/env bash
# Makes small MPEG audio files with lame and ffmpeg and records what ffprobe says about each one, so that
# the frame parser's figures are checked against an independent reader. Run by the build; writes only into
# the folder it is given. Usage: MakeMpegFixtures.sh OUTPUT_DIR
set -euo pipefail
out=$1
mkdir -p "$out"
cd "$out"
expect=expectations.txt
rm -f "$expect.tmp"

for tool in sox lame ffmpeg ffprobe; do
    if ! command -v "$tool" >/dev/null; then
        # The build goes on; the tests that need the files fail and name the missing tool.
        echo "missing $tool" >"$expect"
        exit 0
    fi
done

# Two seconds of a two-tone sine at each rate the files need; stereo and mono.
tone() {  # rate channels file
    sox -n -r "$1" -c "$2" -b 16 "$3" synth 2 sine 440 sine 660 gain -3
}
for spec in "44100 2 s44" "44100 1 m44" "48000 2 s48" "32000 2 s32" "22050 2 s22" "22050 1 m22" "24000 2 s24" \
    "16000 1 m16" "12000 2 s12" "11025 1 m11" "8000 1 m8"; do
    set -- $spec
    tone "$1" "$2" "$3.wav"
done

# name | encoder command (input and output appended) | input | what we asked for: mode number, CRC
fixtures=(
    "l3_cbr128_44k_stereo.mp3|lame --quiet -b 128 -m s|s44.wav|0|0"
    "l3_cbr64_44k_mono_crc.mp3|lame --quiet -p -b 64 -m m|m44.wav|3|1"
    "l3_vbr_44k_joint.mp3|lame --quiet -V 4 -m j|s44.wav|1|0"
    "l3_cbr320_48k_joint.mp3|lame --quiet -b 320 -m j|s48.wav|1|0"
    "l3_cbr96_32k_dual.mp3|lame --quiet -b 96 -m d|s32.wav|2|0"
    "l3_mpeg2_22k_stereo_64.mp3|lame --quiet -b 64 -m s|s22.wav|0|0"
    "l3_mpeg2_22k_mono_32.mp3|lame --quiet -b 32 -m m|m22.wav|3|0"
    "l3_mpeg2_24k_vbr.mp3|lame --quiet -V 5 -m j|s24.wav|1|0"
    "l3_mpeg2_16k_mono_crc.mp3|lame --quiet -p -b 24 -m m|m16.wav|3|1"
    "l3_mpeg25_8k_mono_16.mp3|lame --quiet -b 16 -m m|m8.wav|3|0"
    "l3_mpeg25_11k_mono_vbr.mp3|lame --quiet -V 6 -m m|m11.wav|3|0"
    "l3_mpeg25_12k_joint_24.mp3|lame --quiet -b 24 -m j --resample 12|s12.wav|1|0"
    "l3_tagged_44k_128.mp3|lame --quiet -b 128 -m s --add-id3v2 --tt Title --ta Artist --tl Album --ty 2005 --tc Comment|s44.wav|0|0"
    "l2_44k_stereo_192.mp2|ffmpeg -c:a mp2 -b:a 192k|s44.wav|0|0"
    "l2_48k_mono_96.mp2|ffmpeg -c:a mp2 -b:a 96k -ac 1|s48.wav|3|0"
    "l2_mpeg2_22k_stereo_64.mp2|ffmpeg -c:a mp2 -b:a 64k|s22.wav|0|0"
    "l2_mpeg2_16k_mono_32.mp2|ffmpeg -c:a mp2 -b:a 32k|m16.wav|3|0"
)

for entry in "${fixtures[@]}"; do
    IFS='|' read -r name command input mode crc <<<"$entry"
    if [[ $command == ffmpeg* ]]; then
        ffmpeg -loglevel error -y -i "$input" ${command#ffmpeg } -f mp2 "$name"
    else
        $command "$input" "$name"
    fi
    # Packets are the frames the demuxer finds; decoded frames can be one fewer where the decoder drops a
    # last frame that holds only the encoder's padding.
    probe=$(ffprobe -v error -count_frames -count_packets -select_streams a:0 \
        -show_entries stream=codec_name,nb_read_frames,nb_read_packets,sample_rate,channels,bit_rate,duration \
        -of default=noprint_wrappers=1 "$name" 2>/dev/null | tr '\n' ' ')
    echo "file=$name mode=$mode crc=$crc $probe" >>"$expect.tmp"
done
rm -f ./*.wav
mv "$expect.tmp" "$expect"
