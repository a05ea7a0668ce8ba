# Sources of the play queue (playlist/) and their unit tests, kept here so that the folder's
# owner can add files without touching the top-level lists.
set(LUMORA_PLAYLIST_SOURCES
    playlist/DefaultList.cpp
    playlist/ListFile.cpp
    playlist/ListFileController.cpp
    playlist/MediaTest.cpp
    playlist/MusicLibrary.cpp
    playlist/PlayQueue.cpp
    playlist/QueueController.cpp
)
set(LUMORA_PLAYLIST_TESTS
    tests/playlist/ListFileTest.cpp
    tests/playlist/QueueControllerTest.cpp
)
