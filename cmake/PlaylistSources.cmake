# Sources of the play queue (playlist/) and their unit tests, kept here so that the folder's
# owner can add files without touching the top-level lists.
set(LUMORA_PLAYLIST_SOURCES
    playlist/MediaTest.cpp
    playlist/PlayQueue.cpp
    playlist/QueueController.cpp
)
set(LUMORA_PLAYLIST_TESTS
    tests/playlist/MediaTestTest.cpp
    tests/playlist/PlayQueueTest.cpp
    tests/playlist/QueueControllerTest.cpp
)
