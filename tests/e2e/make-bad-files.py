#!/usr/bin/env python3
"""Makes a folder of malformed files of every kind Lumora reads: media of each format (truncated,
zero-filled, random, misnamed, every header field at its limits, sizes that claim far more than
is there), list files, and lyrics and QGC files beside a playable MP3. Seeded: the same files
every run. Usage: make-bad-files.py FOLDER (MPEG audio goes to FOLDER/mpeg, lyrics beside theirs
to FOLDER/lyrics, lists to FOLDER/lists, the rest to FOLDER/media)."""
import os
import random
import struct
import sys

rng = random.Random(10)
files = {}
U32, U16 = 0xFFFFFFFF, 0xFFFF


def le(fmt, *v): return struct.pack('<' + fmt, *v)
def be(fmt, *v): return struct.pack('>' + fmt, *v)
def noise(n): return bytes(rng.getrandbits(8) for _ in range(n))
def chunk(tag, body, size=None): return tag + le('I', len(body) if size is None else size) + body + b'\0' * (len(body) & 1)
def riff(form, body, size=None): return chunk(b'RIFF', form + body, size)


# MPEG audio: silent frames, 128 kbit/s 44.1 kHz layer III unless a header field says otherwise.
def frame(head=0xFFFB9064, size=417): return be('I', head) + bytes(size - 4)
def frames(n=40, **kw): return frame(**kw) * n
def id3v1(fill=b'\0'): return b'TAG' + fill * 125
def info_block(size=b'00011', text=b'[00:01]abc\r\n'): return b'LYRICSBEGININD0000211LYR' + size + text


MP3 = frames()
mp3s = {
    '0-control': MP3 + id3v1(),  # plays: the first of its folder
    'free-bitrate': frames(head=0xFFFB0064), 'bitrate-15': frames(head=0xFFFBF064),
    'rate-reserved': frames(head=0xFFFB9C64), 'layer-reserved': frames(head=0xFFF99064),
    'version-reserved': frames(head=0xFFEB9064), 'emphasis-reserved': frames(head=0xFFFB9066),
    'crc-wrong': frames(head=0xFFFA9064), 'mpeg25-8k': frames(100, head=0xFFE31864, size=72),
    'layer1-384k': frames(head=0xFFFFC064, size=416), 'layer2-48k': frames(head=0xFFFDA404, size=576),
    'mono-layer2-32k': frames(head=0xFFFD18C4, size=104),
    'first-good-rest-bad': frame() + frames(head=0xFFFBF064), 'first-bad-rest-good': frame(0xFFFBF064) + MP3,
    'vbr-falling': frames(5, head=0xFFFBE064, size=1044) + frames(200, head=0xFFFB1064, size=104),
    'sync-only': b'\xFF\xFB\x90\x64' * 5000, 'ff-filled': b'\xFF' * 65536,
    'sync-then-zero': b'\xFF\xE0' + bytes(10000),
    'xing-huge': frame(size=36) + b'Xing' + be('II', 15, U32) + be('I', U32) + bytes(100) + bytes(277) + MP3,
    'xing-zero': frame(size=36) + b'Xing' + be('III', 3, 0, 0) + bytes(369) + MP3,
    'vbri-huge': frame(size=36) + b'VBRI' + be('HHIIHHHH', 1, 0, U32, U32, U16, U16, 4, U16) + bytes(359) + MP3,
    'id3v2-huge': b'ID3\x03\x00\x00\x7F\x7F\x7F\x7F' + MP3, 'id3v2-zero': b'ID3\x04\x00\x10\0\0\0\0' + MP3,
    'id3v2-only': b'ID3\x03\x00\x00\x00\x00\x02\x00' + bytes(256),
    'id3v2-repeated': b'ID3\x03\x00\x00\0\0\0\0' * 3000 + MP3,
    'tag-only': id3v1(), 'tag-ff': MP3 + id3v1(b'\xFF'), 'tag-short': MP3 + b'TAG',
    'tag-half-char': MP3 + b'TAG' + b'\x81' * 125, 'tag-year-digits': MP3 + b'TAG' + bytes(90) + b'99999' + bytes(30),
    'lyrics3v1-long': MP3 + b'LYRICSBEGIN' + b'x' * 6000 + b'LYRICSEND' + id3v1(),
    'lyrics3v2-huge-size': MP3 + b'LYRICSBEGININD00002' + b'11' + b'999999LYRICS200' + id3v1(),
    'lyrics3v2-zero-size': MP3 + b'LYRICSBEGIN' + b'000000LYRICS200' + id3v1(),
    'lyrics3v2-letters': MP3 + b'LYRICSBEGIN' + b'abcdefLYRICS200' + id3v1(),
    'lyrics3v2-5000': MP3 + b'LYRICSBEGINLYR04990' + b'[00:01]a\r\n' * 499 + b'005010LYRICS200' + id3v1(),
    'lyrics3v2-no-tag': MP3 + b'LYRICSBEGININD0000211LYR00005abcde000030LYRICS200',
    'block-huge-size': MP3 + info_block(b'99999') + id3v1(), 'block-negative': MP3 + info_block(b'-0001') + id3v1(),
    'block-half-char': MP3 + info_block(b'00003', b'[0\x81') + id3v1(), 'block-no-tag': MP3 + info_block(),
    'block-at-limit': MP3 + info_block(b'03555', b'\xB0\xA1' * 1777 + b'x') + id3v1(),
    'block-beyond-limit': MP3 + info_block(b'04000', b'a' * 4000) + id3v1(),
    'block-twice': MP3 + info_block() + info_block() + id3v1(), 'lyrics-word-only': b'LYRICS' * 700,
    'block-header-only': MP3 + b'LYRICSBEGININD' + id3v1(),
    'block-many-lines': MP3 + info_block(b'03000', b'\r\n' * 1500) + id3v1(),
    'block-deep-stamps': MP3 + info_block(b'03500', b'[00:01]' * 500) + id3v1(),
    'zero-4mb-tag': bytes(4 << 20) + id3v1(),
}
for name, data in mp3s.items(): files[name + '.mp3'] = data
for cut in (1, 3, 4, 5, 100, 417, 418, 8000):
    files[f'cut-{cut}.mp3'] = MP3[:cut]
files['layer3-named.mp2'] = MP3
files['layer1-named.mp1'] = frames(head=0xFFFB9064)[:5000]
files['random-frames.mpa'] = b''.join(frame(0xFFE00000 | rng.getrandbits(21), rng.randint(4, 1500)) for _ in range(60))


# RIFF WAVE.
def fmt(tag=1, ch=1, rate=8000, avg=8000, align=1, bits=8, extra=b''):
    return chunk(b'fmt ', le('HHIIHH', tag, ch, rate, avg, align, bits) + extra)


def wave(f=None, data=bytes(8000), dsize=None, size=None, pre=b''):
    return riff(b'WAVE', pre + (fmt() if f is None else f) + chunk(b'data', data, dsize), size)


waves = {
    'riff-huge': wave(size=U32), 'data-huge': wave(dsize=U32), 'data-missing': riff(b'WAVE', fmt()),
    'fmt-missing': riff(b'WAVE', chunk(b'data', bytes(8000))), 'fmt-huge': riff(b'WAVE', chunk(b'fmt ', bytes(16), U32)),
    'fmt-short': wave(chunk(b'fmt ', b'\x01\0')), 'fmt-empty': wave(chunk(b'fmt ', b'')),
    'channels-0': wave(fmt(ch=0)), 'channels-max': wave(fmt(ch=U16, align=U16)), 'rate-0': wave(fmt(rate=0, avg=0)),
    'rate-max': wave(fmt(rate=U32, avg=U32)), 'align-0': wave(fmt(align=0)), 'bits-0': wave(fmt(bits=0)),
    'bits-max': wave(fmt(bits=U16)), 'tag-0': wave(fmt(tag=0)), 'tag-max': wave(fmt(tag=U16)),
    'adpcm-cb-huge': wave(fmt(tag=2, extra=le('H', U16))),
    'extensible-cut': wave(fmt(tag=0xFFFE, ch=2, bits=16, align=4, extra=le('HH', 22, 16))),
    'mp3-in-wave': wave(fmt(tag=0x55, ch=2, rate=44100, avg=16000, align=1, bits=0, extra=le('HHIHHH', 12, 1, 2, 417, 1, 0)), MP3),
    'mp3-in-wave-bad': wave(fmt(tag=0x55, ch=9, rate=1, avg=0, align=0, bits=0, extra=le('H', 0)), noise(4000)),
    'odd-chunks': wave(pre=b''.join(chunk(b'junk', b'x' * (i % 7)) for i in range(1000))),
    'list-huge': wave(pre=chunk(b'LIST', b'INFOINAM' + le('I', U32) + b'x')), 'rifx': b'RIFX' + wave()[4:],
    'riff-only': b'RIFF', 'riff-header': b'RIFF\xff\xff\xff\xffWAVE',
    'data-first': riff(b'WAVE', chunk(b'data', bytes(800)) + fmt()), '0-control': wave(),
}
for name, data in waves.items(): files[name + '.wav'] = data


# Standard MIDI files.
def mthd(fmt_=0, ntrks=1, div=96, size=6): return b'MThd' + be('IHHH', size, fmt_, ntrks, div)
def mtrk(body, size=None): return b'MTrk' + be('I', len(body) if size is None else size) + body


TRACK = b'\x00\x90\x3c\x40\x60\x80\x3c\x00\x00\xff\x2f\x00'
mids = {
    'header-size-huge': mthd(size=U32) + mtrk(TRACK), 'header-size-0': mthd(size=0) + mtrk(TRACK),
    'format-max': mthd(U16) + mtrk(TRACK), 'tracks-0': mthd(1, 0), 'tracks-max': mthd(1, U16) + mtrk(TRACK),
    'division-0': mthd(div=0) + mtrk(TRACK), 'division-smpte': mthd(div=0xE728) + mtrk(TRACK),
    'division-max': mthd(div=U16) + mtrk(TRACK), 'track-huge': mthd() + mtrk(TRACK, U32),
    'no-end-of-track': mthd() + mtrk(b'\x00\x90\x3c\x40'), 'running-status-first': mthd() + mtrk(b'\x00\x3c\x40' + TRACK),
    'delta-max': mthd() + mtrk(b'\xff\xff\xff\x7f\x90\x3c\x40' + TRACK), 'delta-endless': mthd() + mtrk(b'\x80' * 5000),
    'tempo-0': mthd() + mtrk(b'\x00\xff\x51\x03\x00\x00\x00' + TRACK), 'meta-huge': mthd() + mtrk(b'\x00\xff\x01\xff\xff\xff\x7fabc'),
    'sysex-huge': mthd() + mtrk(b'\x00\xf0\xff\xff\xff\x7f\xf7'), 'events-random': mthd() + mtrk(noise(3000)),
    'notes-dense': mthd(div=1) + mtrk(b'\x00\x9f\x7f\x7f' * 4000 + b'\x00\xff\x2f\x00'),
}
for name, data in mids.items(): files[name + '.mid'] = data
files['rmid-huge.rmi'] = riff(b'RMID', chunk(b'data', mthd() + mtrk(TRACK), U32))
files['rmid-random.rmi'] = riff(b'RMID', chunk(b'data', noise(2000)))


# AVI: one video stream of uncompressed 8x8 frames unless a field says otherwise.
def avi(usec=66666, total=2, streams=1, w=8, h=8, handler=b'DIB ', bits=24, scale=1, rate=15, movi=None, idx=b''):
    avih = chunk(b'avih', le('10I', usec, 0, 0, 0x10, total, 0, streams, 0, w, h) + bytes(16))
    strh = chunk(b'strh', b'vids' + handler + le('IHHIIIIIIII', 0, 0, 0, 0, scale, rate, 0, total, 0, U32, 0) + bytes(8))
    strf = chunk(b'strf', le('IiiHHIIiiII', 40, w, h, 1, bits, 0, 0, 0, 0, 0, 0))
    hdrl = chunk(b'LIST', b'hdrl' + avih + chunk(b'LIST', b'strl' + strh + strf))
    body = movi if movi is not None else chunk(b'LIST', b'movi' + chunk(b'00db', bytes(192)) * 2)
    return riff(b'AVI ', hdrl + body + idx)


avis = {
    'usec-0': avi(usec=0), 'frames-huge': avi(total=U32), 'streams-0': avi(streams=0), 'streams-huge': avi(streams=U32),
    'size-0': avi(w=0, h=0), 'size-huge': avi(w=0x7FFFFFFF, h=0x7FFFFFFF), 'codec-unknown': avi(handler=b'ZZZZ'),
    'bits-0': avi(bits=0), 'rate-0': avi(scale=0, rate=0), 'movi-huge': avi(movi=chunk(b'LIST', b'movi', U32)),
    'index-beyond': avi(idx=chunk(b'idx1', le('4sIII', b'00db', 0x10, U32, U32) * 50)),
    'lists-nested': riff(b'AVI ', b'LIST' * 2000), 'header-only': riff(b'AVI ', b''),
}
for name, data in avis.items(): files[name + '.avi'] = data


# AIFF: 80-bit extended rate given as (exponent, mantissa).
def aiff(ch=1, nframes=800, bits=8, rate=(0x400B, 0xFA00000000000000), ssnd=None, form=b'AIFF', comp=b''):
    comm = b'COMM' + be('IhIh', 18 + len(comp), ch, nframes, bits) + be('HQ', *rate) + comp
    s = ssnd if ssnd is not None else b'SSND' + be('III', 808, 0, 0) + bytes(800)
    return b'FORM' + be('I', 4 + len(comm) + len(s)) + form + comm + s


aifs = {
    'channels-0': aiff(ch=0), 'channels-negative': aiff(ch=-1), 'frames-huge': aiff(nframes=U32), 'bits-0': aiff(bits=0),
    'bits-max': aiff(bits=32767), 'rate-0': aiff(rate=(0, 0)), 'rate-inf': aiff(rate=(0x7FFF, 0)),
    'rate-nan': aiff(rate=(0x7FFF, U32)), 'rate-tiny': aiff(rate=(1, 1)),
    'ssnd-offset-huge': aiff(ssnd=b'SSND' + be('III', 8, U32, U32)), 'comm-missing': b'FORM' + be('I', 4) + b'AIFF',
    'compressed-unknown': aiff(form=b'AIFC', comp=b'ZZZZ\x00'),
}
for name, data in aifs.items(): files[name + '.aif'] = data


def au(offset=24, size=800, enc=2, rate=8000, ch=1): return b'.snd' + be('5I', offset, size, enc, rate, ch) + bytes(800)


aus = {'offset-0': au(offset=0), 'offset-huge': au(offset=U32), 'size-huge': au(size=U32), 'encoding-0': au(enc=0),
       'encoding-27': au(enc=27), 'encoding-max': au(enc=U32), 'rate-0': au(rate=0), 'channels-0': au(ch=0),
       'channels-max': au(ch=U32)}
for name, data in aus.items(): files[name + '.au'] = data
files['rate-max.snd'] = au(rate=U32)


# ASF (Windows Media): header object with the file and stream properties objects.
def guid(text): return bytes.fromhex(text)


ASF_HEADER, ASF_FILE = guid('3026B2758E66CF11A6D900AA0062CE6C'), guid('A1DCAB8C47A9CF118EE400C00C205365')
ASF_STREAM, ASF_DATA = guid('9107DCB7B7A9CF118EE600C00C205365'), guid('3626B2758E66CF11A6D900AA0062CE6C')


def asf(count=2, size=None, fsize=104, packets=1, tslen=0, dsize=50):
    fp = ASF_FILE + le('Q', fsize) + bytes(16) + le('QQQQQQIIII', 0, 0, packets, 0, 0, 0, 2, 0, 0, 0)
    sp = ASF_STREAM + le('Q', 78 + tslen) + bytes(32) + le('QIIH', 0, tslen, 0, 1) + bytes(4) + bytes(min(tslen, 64))
    objs = fp + sp
    head = ASF_HEADER + le('QIBB', size or 30 + len(objs), count, 1, 2) + objs
    return head + ASF_DATA + le('Q', dsize) + bytes(16) + le('QH', packets, 0x101) + bytes(24)


asfs = {'objects-huge': asf(count=U32), 'header-huge': asf(size=(1 << 63)), 'file-props-0': asf(fsize=0),
        'packets-huge': asf(packets=(1 << 64) - 1), 'stream-data-huge': asf(tslen=U32), 'data-huge': asf(dsize=(1 << 63))}
for name, data in asfs.items(): files[name + '.wma'] = data
files['objects-0.asf'] = asf(count=0)
files['header-cut.wmv'] = asf()[:40]


# MPEG program streams and elementary streams.
PACK1 = b'\x00\x00\x01\xBA\x21\x00\x01\x00\x01\x80\x00\x01'
SEQ = b'\x00\x00\x01\xB3'


def seq(w=352, h=240, aspect=1, rate=3, bitrate=0x3FFFF):
    return SEQ + bytes([w >> 4, ((w & 15) << 4) | (h >> 8), h & 255, (aspect << 4) | rate]) + be('I', (bitrate << 14) | 0x2000 | (112 << 3))


mpgs = {
    'pack-only': PACK1 * 2000, 'system-header-huge': PACK1 + b'\x00\x00\x01\xBB\xFF\xFF' + bytes(100),
    'pes-huge': PACK1 + b'\x00\x00\x01\xE0\xFF\xFF' + seq() + bytes(100), 'end-only': b'\x00\x00\x01\xB9',
    'start-codes': b'\x00\x00\x01' * 20000, 'seq-size-0': PACK1 + b'\x00\x00\x01\xE0\x00\x10' + seq(0, 0, 0, 0) + bytes(4),
    'seq-size-max': PACK1 + b'\x00\x00\x01\xE0\x00\x10' + seq(4095, 4095, 15, 15) + bytes(4),
    'mpeg2-stuffing': b'\x00\x00\x01\xBA\x44' + bytes(8) + b'\xFF' + bytes(7) + seq(),
}
for name, data in mpgs.items(): files[name + '.mpg'] = data
files['seq-random.mpv'] = seq() + noise(5000)
files['cdxa-huge.dat'] = riff(b'CDXA', chunk(b'fmt ', bytes(16)) + chunk(b'data', PACK1, U32))
files['pack-random.vob'] = b'\x00\x00\x01\xBA\x44' + noise(20000)


# Still pictures.
def bmp(w=8, h=8, planes=1, bits=24, comp=0, used=0, hsize=40, off=54, body=bytes(192)):
    info = le('IiiHHIIiiII', hsize, w, h, planes, bits, comp, len(body), 0, 0, used, 0)
    return b'BM' + le('IHHI', 14 + len(info) + len(body), 0, 0, off) + info + body


bmps = {'size-0': bmp(0, 0), 'size-huge': bmp(0x7FFFFFFF, 0x7FFFFFFF), 'height-min': bmp(h=-0x80000000),
        'bits-0': bmp(bits=0), 'bits-7': bmp(bits=7), 'bits-64': bmp(bits=64), 'planes-0': bmp(planes=0),
        'rle8-wild': bmp(bits=8, comp=1, body=bytes(1024) + b'\x00\x02\xff\xff' * 50), 'rle4-cut': bmp(bits=4, comp=2, body=b'\x05'),
        'bitfields-no-masks': bmp(bits=16, comp=3, body=b''), 'colors-huge': bmp(bits=8, used=U32),
        'header-huge': bmp(hsize=U32), 'offset-beyond': bmp(off=U32), 'jpeg-inside': bmp(comp=4, body=noise(200))}
for name, data in bmps.items(): files[name + '.bmp'] = data
files['header-core.dib'] = bmp(hsize=12)


def seg(marker, body, size=None): return b'\xFF' + bytes([marker]) + be('H', len(body) + 2 if size is None else size) + body


SOF = lambda w, h, n=3: seg(0xC0, be('BHHB', 8, h, w, n) + b'\x01\x11\x00' * n)
jpgs = {'soi-only': b'\xFF\xD8', 'size-0': b'\xFF\xD8' + SOF(0, 0) + b'\xFF\xD9', 'size-max': b'\xFF\xD8' + SOF(U16, U16) + noise(500),
        'segment-size-0': b'\xFF\xD8' + seg(0xE0, b'', 0), 'segment-size-1': b'\xFF\xD8' + seg(0xDB, b'', 1),
        'segment-size-max': b'\xFF\xD8' + seg(0xE1, b'Exif\0\0', U16), 'huffman-overfull': b'\xFF\xD8' + SOF(8, 8) + seg(0xC4, b'\x00' + b'\xFF' * 16 + bytes(200)) + b'\xFF\xDA\x00\x08\x01\x01\x00\x00\x3f\x00' + noise(300),
        'scan-components-255': b'\xFF\xD8' + SOF(8, 8, 255) + seg(0xDA, b'\xFF' + bytes(4)) + noise(300),
        'progressive-wild': b'\xFF\xD8' + seg(0xC2, be('BHHB', 8, 64, 64, 1) + b'\x01\x11\x00') + seg(0xDA, b'\x01\x01\x00\x3f\xff\xff') + noise(1000)}
for name, data in jpgs.items(): files[name + '.jpg'] = data
files['size-max.gif'] = b'GIF89a' + le('HHBBB', U16, U16, 0xF7, 0, 0) + bytes(768) + b',' + le('HHHHB', 0, 0, U16, U16, 0) + b'\x0c\xff' + noise(255)
files['lzw-size-0.gif'] = b'GIF87a' + le('HHBBB', 8, 8, 0, 0, 0) + b',' + le('HHHHB', 0, 0, 8, 8, 0) + b'\x00\x05' + noise(5) + b'\x00;'
files['extensions-endless.gif'] = b'GIF89a' + le('HHBBB', 8, 8, 0, 0, 0) + b'!\xf9' + b'\x04' * 20000
files['count-huge.ico'] = le('HHH', 0, 1, U16) + le('BBBBHHII', 0, 0, 0, 0, 1, 32, U32, 22) * 4
files['entry-beyond.ico'] = le('HHH', 0, 1, 1) + le('BBBBHHII', 16, 16, 0, 0, 1, 32, 1128, U32)
files['count-0.cur'] = le('HHH', 0, 2, 0)
files['size-0.cur'] = le('HHH', 0, 2, 1) + le('BBBBHHII', 0, 0, 0, 0, 1, 1, 40, 22) + le('IiiHHI', 40, 0, 0, 1, 1, 0)
WMF_HEAD = lambda size=U32: le('HHHIHIH', 1, 9, 0x300, size, 1, 3, 0)
files['placeable-huge.wmf'] = b'\xD7\xCD\xC6\x9A' + le('HhhhhHIH', 0, -32768, -32768, 32767, 32767, 0, 0, 0) + WMF_HEAD() + le('IH', 0, 0x0103) * 100
files['record-size-0.wmf'] = WMF_HEAD(100) + le('IH', 0, 0x0213) * 100
files['record-size-huge.wmf'] = WMF_HEAD(100) + le('IHhh', U32, 0x0213, 10, 10)
files['header-size-0.emf'] = le('II', 1, 0) + bytes(80)
files['header-huge.emf'] = le('II', 1, 108) + le('4i4i', *([0] * 8)) + b' EMF' + le('IIIHH', 0x10000, U32, U32, U16, 0) + bytes(60)
files['record-size-0.emf'] = le('II', 1, 88) + bytes(32) + b' EMF' + le('IIIHH', 0x10000, 200, 3, 0, 0) + bytes(40) + le('II', 0x1B, 0) * 10


# Other media the queue takes: Flash, QuickTime, RealMedia, CD tracks, Windows Media lists.
files['length-huge.swf'] = b'FWS\xff' + le('I', U32) + noise(100)
files['zlib-bad.swf'] = b'CWS\x0a' + le('I', 1000) + noise(100)
files['atom-huge.mov'] = be('I', U32) + b'moov' + noise(100)
files['atom-64bit.mov'] = be('I', 1) + b'mdat' + be('Q', (1 << 64) - 1) + noise(100)
files['atom-size-0.qt'] = be('I', 0) + b'moov' + be('I', 8) + b'trak' * 3
files['header-huge.rm'] = b'.RMF' + be('IHII', U32, 0, 0, U32) + noise(200)
files['random.ra'] = b'.ra\xfd' + noise(500)
files['track-0.cda'] = riff(b'CDDA', chunk(b'fmt ', le('HHIIII', 1, 0, 0, 0, 0, 0)))
files['track-99.cda'] = riff(b'CDDA', chunk(b'fmt ', le('HHIIII', 1, 99, U32, U32, U32, U32)))
files['nested.asx'] = b'<asx version="3.0">' + b'<entry><ref href="x.asx"/>' * 2000
files['self-ref.wax'] = b'<asx version="3.0"><entry><ref href="self-ref.wax"/></entry></asx>'
files['random.wpl'] = noise(2000)

# The same content under many names, and other contents under media names.
for i, ext in enumerate(('mp3', 'wav', 'mid', 'avi', 'aif', 'au', 'wma', 'mpg', 'bmp', 'jpg', 'gif', 'wmf', 'ico', 'mov', 'swf')):
    files[f'random.{ext}'] = noise(65536)
    files[f'zero-filled.{ext}' if i % 2 else f'empty.{ext}'] = bytes(65536 if i % 2 else 0)
for name, data in (('wave-named.mp3', wave()), ('mp3-named.wav', MP3), ('midi-named.mp3', mthd() + mtrk(TRACK)),
                   ('mp3-named.mid', MP3), ('avi-named.mp3', avi()), ('bmp-named.avi', bmp()), ('mp3-named.jpg', MP3),
                   ('text-named.au', b'plain text\r\n' * 100), ('UPPER-CASE.MP3', MP3[:2000])):
    files[name] = data

# List files (opened through the list command), each naming files of this folder or none.
HEAD = '这是ZEV-Lumora-正式版-的列表文件请不要修改以下参数，以免造成错误。'.encode('gb18030')
here = ('Z:' + os.path.abspath(sys.argv[1]).replace('/', '\\') + '\\media').encode()
lists = {
    'empty': b'', 'header-only': HEAD, 'edition-wrong': b'a-b-c\r\n1*1\r\nC:\\*x.mp3\r\n', 'no-dashes': b'abc\r\n1*1\r\nC:\\*x.mp3\r\n',
    'count-huge': HEAD + b'\r\n99999999999999999999*1\r\nC:\\*a.mp3*b.mp3\r\n', 'count-negative': HEAD + b'\r\n-5*1\r\nC:\\*a.mp3\r\n',
    'flag-odd': HEAD + b'\r\n2*7\r\nC:\\*a.mp3*b.mp3\r\n', 'line2-missing': HEAD + b'\r\n', 'folder-empty': HEAD + b'\r\n2*1\r\n*a.mp3*b.mp3\r\n',
    'drive-unknown': HEAD + b'\r\n2*1\r\nQ:\\nowhere*a.mp3*b.mp3\r\n', 'drive-odd': HEAD + b'\r\n2*1\r\n?:*a.mp3*b.mp3\r\n',
    'names-2000': HEAD + b'\r\n2000*1\r\nC:\\' + b''.join(b'*%d.mp3' % i for i in range(2000)) + b'\r\n',
    'line-100k': HEAD + b'\r\n1*1\r\nC:\\' + b'x' * 100000 + b'*a.mp3\r\n', 'lf-only': HEAD + b'\n2*1\nC:\\*a.mp3*b.mp3\n',
    'cr-only': HEAD + b'\r2*1\rC:\\*a.mp3*b.mp3\r', 'bom-utf8': b'\xef\xbb\xbf' + HEAD + b'\r\n1*1\r\nC:\\*a.mp3\r\n',
    'half-char': HEAD + b'\r\n1*1\r\nC:\\\x81*\x81.mp3\x81\r\n', 'stars-only': HEAD + b'\r\n0*0\r\n' + b'*' * 5000 + b'\r\n',
    'names-climb': HEAD + b'\r\n2*1\r\nC:\\*..\\..\\..\\a.mp3*' + b'..\\' * 300 + b'b.mp3\r\n',
    'names-here-bad': HEAD + b'\r\n5*0\r\n' + here + b'*random.mp3*empty.wav*rate-0.au*count-huge.ico*size-huge.bmp\r\n',
    'names-here-unfiltered': HEAD + b'\r\n3*1\r\n' + here + b'*zero-filled.avi*tracks-0.mid*packets-huge.wma\r\n',
    'random': noise(3000), 'zero-filled': bytes(3000),
}
for name, data in lists.items(): files[f'list-{name}.qlb'] = data

# Lyrics beside a playable MP3: the lookup reads them when it starts.
lyrics = {
    'lrc': {'stamp-huge': b'[99999999999999999999:99]a\r\n', 'stamp-negative': b'[-1:-1]a\r\n[-00:-5]b\r\n',
            'fraction-long': b'[00:01.' + b'9' * 5000 + b']a\r\n', 'stamps-1000': b'[00:01]' * 1000 + b'a\r\n',
            'brackets-empty': b'[]\r\n[:]\r\n[\r\n]\r\n[:::]a\r\n', 'line-100k': b'[00:01]' + b'\xb0\xa1' * 50000 + b'\r\n',
            'half-char': b'[00:01]\x81\r\n[00:02]\x81', 'utf16': '\ufeff[00:01]歌\r\n'.encode('utf-16-le'),
            'random': noise(5000), 'lines-20000': b'[00:01]a\r\n' * 20000, 'offset-tag': b'[offset:99999999999]\r\n[00:01]a\r\n',
            'stamp-exponent': b'[00:1e308]a\r\n[1e308:00]b\r\n[00:nan]c\r\n[00:inf]d\r\n'},
    'smi': {'start-huge': b'<SYNC Start=99999999999999999999><P Class=ZHCC>a\r\n', 'start-negative': b'<sync start=-5000><p class=ZHCC>a\r\n',
            'no-close': b'<sync start=\r\n<sync start=1000\r\n', 'short-lines': b'<sync start=>\r\n' * 100,
            'nbsp-only': b'<sync start=1000><p class=ZHCC>&nbsp;\r\n' * 1000, 'random': noise(5000),
            'text-100k': b'<sync start=1000><p class=ZHCC>' + b'a' * 100000 + b'\r\n', 'half-char': b'<sync start=1000><p class=ZHCC>\x81'},
    'qgc': {'count-huge': '[媒体歌词]\r\n行数=2147483647\r\n歌词1=[00:01]a\r\n'.encode('gb18030'),
            'count-over': '[媒体歌词]\r\n行数=99999999999999999999\r\n歌词1=[00:01]a\r\n'.encode('gb18030'),
            'count-negative': '[媒体歌词]\r\n行数=-5\r\n'.encode('gb18030'), 'count-letters': '[媒体歌词]\r\n行数=abc\r\n'.encode('gb18030'),
            'count-100000': '[媒体歌词]\r\n行数=100000\r\n'.encode('gb18030'),
            'sections-twice': '[媒体歌词]\r\n行数=1\r\n[媒体歌词]\r\n行数=2\r\n歌词2=[00:02]b\r\n'.encode('gb18030'),
            'no-section': '行数=1\r\n歌词1=[00:01]a\r\n'.encode('gb18030'), 'random': noise(5000),
            'line-100k': '[媒体歌词]\r\n行数=1\r\n歌词1=[00:01]'.encode('gb18030') + b'x' * 100000 + b'\r\n',
            'bracket-unclosed': b'[\xc3\xbd\xcc\xe5\xb8\xe8\xb4\xca\r\n' + b'[' * 5000},
}
for ext, cases in lyrics.items():
    for name, data in cases.items():
        files[f'lyrics-{ext}-{name}.mp3'] = MP3
        files[f'lyrics-{ext}-{name}.{ext}'] = data

for name, data in files.items():
    ext = name.lower().rsplit('.', 1)[1]
    sub = 'lists' if ext == 'qlb' else 'lyrics' if name.startswith('lyrics-') else 'mpeg' if ext in ('mp1', 'mp2', 'mp3', 'lrc', 'smi', 'qgc') else 'media'
    os.makedirs(os.path.join(sys.argv[1], sub), exist_ok=True)
    with open(os.path.join(sys.argv[1], sub, name), 'wb') as f:
        f.write(data)
print(f'{len(files)} files in {sys.argv[1]}')
