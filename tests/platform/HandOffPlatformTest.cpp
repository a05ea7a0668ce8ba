// The door of the running instance: what a second start sends arrives whole, and a note to read the
// slot waits in the queue until the instance answers again.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/HandOff_win.h"

namespace lumora {
namespace {

TEST(HandOffDoor, MessagesArriveWholeAndSlotNotesWaitInTheQueue) {
    std::vector<HandOffMessage> heard;
    int slotNotes = 0;
    {
        HandOffReceiver door;
        ASSERT_TRUE(door.Open([&](const HandOffMessage& m) { heard.push_back(m); }, [&] { ++slotNotes; }));
        const std::string path = "D:\\音乐\\周末 歌曲.mp3";
        ASSERT_TRUE(SendHandOff(HandOffKind::Argument, path, 0));
        ASSERT_TRUE(SendHandOff(HandOffKind::Withdraw, "", 0));
        ASSERT_EQ(heard.size(), 2u);
        EXPECT_EQ(std::tuple(heard[0].kind, heard[0].process, heard[0].startedMs, heard[0].argument),
                  std::tuple(HandOffKind::Argument, GetCurrentProcessId(), ThisProcessStartMs(), path));
        EXPECT_EQ(heard[1].kind, HandOffKind::Withdraw);
        EXPECT_GT(ThisProcessStartMs(), 0);
        EXPECT_LE(ThisProcessStartMs(), HandOffNowMs());

        PointToHandOffSlot();
        EXPECT_EQ(slotNotes, 0);  // posted, not sent: read when the instance next looks at its queue
        for (MSG msg; PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&msg);
        EXPECT_EQ(slotNotes, 1);
    }
    // With the door closed nobody answers, and the start keeps its argument.
    EXPECT_FALSE(SendHandOff(HandOffKind::Argument, "D:\\a.mp3", 40));
    EXPECT_EQ(heard.size(), 2u);
}

}  // namespace
}  // namespace lumora
