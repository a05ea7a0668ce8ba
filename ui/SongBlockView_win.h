#pragma once
// The main window's block view of the song choice ("模块式"选歌): one numbered block per queue entry,
// rows of them scrolled a row at a time, the playing one marked; a click plays the block's entry and a
// balloon names the entry under the pointer.
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/TooltipClient_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {

class SongBlockView final : public WindowBase<SongBlockView> {
public:
    // Made hidden, as a child of `parent` with control id `id`.
    bool Create(HWND parent, int id);
    // The queue's list lines and the playing entry (1-based, 0 for none); the playing one is scrolled into view.
    void SetEntries(const std::vector<std::string>& lines, int current);
    // A block was clicked: its entry, 1-based.
    std::function<void(int)> onChoose;

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    void Paint(HDC dc, const RECT& client);
    int PerRow() const;
    int VisibleRows() const;
    int Rows() const;
    void ScrollTo(int row);
    // The entry under a point of the client area; 0 for none.
    int EntryAt(int x, int y) const;
    void Hover(int entry);

    std::vector<std::string> lines_;
    int current_ = 0;
    int top_ = 0;  // the top row shown
    int hot_ = 0;  // the entry under the pointer
    bool tracking_ = false;
    TooltipClient tips_;
    bool tipsAttached_ = false;
};

}  // namespace lumora
