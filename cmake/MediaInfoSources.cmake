# Sources of the media information module (mediainfo/) and their unit tests, kept here so that the folder's
# owner can add files without touching the top-level lists.
set(LUMORA_MEDIAINFO_SOURCES
    mediainfo/Id3v1.cpp
    mediainfo/InfoBlock.cpp
    mediainfo/InfoEditor.cpp
    mediainfo/ListInfo.cpp
    mediainfo/LrcReader.cpp
    mediainfo/LyricsLook.cpp
    mediainfo/LyricsDisplay.cpp
    mediainfo/LyricsLookup.cpp
    mediainfo/LyricsTiming.cpp
    mediainfo/MpegAudioParser.cpp
    mediainfo/MpegFrameHeader.cpp
    mediainfo/QgcFile.cpp
    mediainfo/SmiReader.cpp
    mediainfo/StreamPanel.cpp
    mediainfo/TrailingTags.cpp
)
set(LUMORA_MEDIAINFO_TESTS
    tests/mediainfo/InfoBlockTest.cpp
    tests/mediainfo/LyricsLookupTest.cpp
    tests/mediainfo/MpegAudioParserTest.cpp
)

# Test media for the frame parser: small files made in the build tree by lame and ffmpeg, with ffprobe's
# figures for each (never committed, never downloaded), and the shared corpus of real-world files read in
# place. The unit tests find both through compile definitions and fail when they are not there.
if(LUMORA_TESTS)
    set(LUMORA_MPEG_FIXTURES_DIR ${CMAKE_BINARY_DIR}/mpeg-fixtures)
    get_filename_component(LUMORA_CORPUS_DIR ${CMAKE_CURRENT_LIST_DIR}/../../shared/corpus ABSOLUTE)
    add_custom_command(
        OUTPUT ${LUMORA_MPEG_FIXTURES_DIR}/expectations.txt
        COMMAND ${CMAKE_CURRENT_LIST_DIR}/../tests/mediainfo/MakeMpegFixtures.sh ${LUMORA_MPEG_FIXTURES_DIR}
        DEPENDS ${CMAKE_CURRENT_LIST_DIR}/../tests/mediainfo/MakeMpegFixtures.sh
        COMMENT "Making MPEG audio test files and ffprobe's figures for them"
        VERBATIM)
    add_custom_target(lumora_mpeg_fixtures ALL DEPENDS ${LUMORA_MPEG_FIXTURES_DIR}/expectations.txt)

    # The test target is made later (tests/); wire it up once every target exists.
    function(lumora_wire_mediainfo_test_media)
        if(NOT TARGET lumora_unit_tests)
            return()
        endif()
        # Under Wine the build machine's root is drive Z:.
        set(root "")
        if(WIN32)
            set(root "Z:")
        endif()
        target_compile_definitions(lumora_unit_tests PRIVATE
            LUMORA_MPEG_FIXTURES_DIR="${root}${LUMORA_MPEG_FIXTURES_DIR}"
            LUMORA_CORPUS_DIR="${root}${LUMORA_CORPUS_DIR}")
        add_dependencies(lumora_unit_tests lumora_mpeg_fixtures)
    endfunction()
    cmake_language(DEFER CALL lumora_wire_mediainfo_test_media)
endif()
