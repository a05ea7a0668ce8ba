#include "ui/SongBlockView_win.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdio>

#include "platform/WinText_win.h"
#include "settings/SongMenu.h"
#include "ui/Dpi_win.h"
#include "ui/SkinPaint_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

constexpr wchar_t kClass[] = L"LumoraSongBlocks";
// A block and the room around it at 96 DPI.
constexpr int kMargin = 4;
constexpr int kCellWidth = 38;
constexpr int kCellHeight = 24;
constexpr int kGap = 4;

}  // namespace

bool SongBlockView::Create(HWND parent, int id) {
    if (!EnsureWindowClass(kClass, WndProc, Theme::DisplayBrush(), IDC_HAND)) return false;
    CreateWindowExW(0, kClass, L"", WS_CHILD | WS_VSCROLL | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent,
                    reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), this);
    return hwnd_ != nullptr;
}

void SongBlockView::SetEntries(const std::vector<std::string>& lines, int current) {
    lines_ = lines;
    current_ = current;
    hot_ = 0;
    ScrollTo(RowToShow(current, PerRow(), VisibleRows(), std::min(top_, std::max(Rows() - VisibleRows(), 0))));
    InvalidateRect(hwnd_, nullptr, FALSE);
}

int SongBlockView::PerRow() const {
    RECT r{};
    GetClientRect(hwnd_, &r);
    const int dpi = WindowDpi(hwnd_);
    return std::max(1, static_cast<int>(r.right - Scaled(kMargin, dpi)) / Scaled(kCellWidth, dpi));
}

int SongBlockView::VisibleRows() const {
    RECT r{};
    GetClientRect(hwnd_, &r);
    const int dpi = WindowDpi(hwnd_);
    return std::max(1, static_cast<int>(r.bottom - Scaled(kMargin, dpi)) / Scaled(kCellHeight, dpi));
}

int SongBlockView::Rows() const { return (static_cast<int>(lines_.size()) + PerRow() - 1) / PerRow(); }

void SongBlockView::ScrollTo(int row) {
    top_ = std::clamp(row, 0, std::max(Rows() - VisibleRows(), 0));
    // The bar stays, greyed while everything fits: the rows keep their width.
    SCROLLINFO si{};
    si.cbSize = sizeof si;
    si.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    si.nMax = std::max(Rows() - 1, 0);
    si.nPage = static_cast<UINT>(VisibleRows());
    si.nPos = top_;
    SetScrollInfo(hwnd_, SB_VERT, &si, TRUE);
    InvalidateRect(hwnd_, nullptr, FALSE);
}

int SongBlockView::EntryAt(int x, int y) const {
    const int dpi = WindowDpi(hwnd_);
    const int left = x - Scaled(kMargin, dpi), top = y - Scaled(kMargin, dpi);
    if (left < 0 || top < 0) return 0;
    const int column = left / Scaled(kCellWidth, dpi), row = top / Scaled(kCellHeight, dpi);
    // The gaps between blocks belong to no entry.
    if (left % Scaled(kCellWidth, dpi) >= Scaled(kCellWidth - kGap, dpi) ||
        top % Scaled(kCellHeight, dpi) >= Scaled(kCellHeight - kGap, dpi)) {
        return 0;
    }
    return BlockAt(top_ + row, column, PerRow(), static_cast<int>(lines_.size())).value_or(0);
}

void SongBlockView::Hover(int entry) {
    if (entry == hot_) return;
    hot_ = entry;
    if (tips && entry > 0) tips->Set(hwnd_, lines_[static_cast<size_t>(entry - 1)]);
    InvalidateRect(hwnd_, nullptr, FALSE);
}

LRESULT SongBlockView::OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_SIZE:
            ScrollTo(top_);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd_, &ps);
            RECT client;
            GetClientRect(hwnd_, &client);
            if (client.right > 0 && client.bottom > 0) {
                // Drawn into a bitmap first: no flicker while the list scrolls.
                BufferedDc buffer(dc, client);
                Paint(buffer.Get(), client);
            }
            EndPaint(hwnd_, &ps);
            return 0;
        }
        case WM_VSCROLL: {
            SCROLLINFO si{};
            si.cbSize = sizeof si;
            si.fMask = SIF_TRACKPOS;
            GetScrollInfo(hwnd_, SB_VERT, &si);
            switch (LOWORD(wp)) {
                case SB_LINEUP:
                    ScrollTo(top_ - 1);
                    break;
                case SB_LINEDOWN:
                    ScrollTo(top_ + 1);
                    break;
                case SB_PAGEUP:
                    ScrollTo(top_ - VisibleRows());
                    break;
                case SB_PAGEDOWN:
                    ScrollTo(top_ + VisibleRows());
                    break;
                case SB_THUMBTRACK:
                case SB_THUMBPOSITION:
                    ScrollTo(si.nTrackPos);
                    break;
                default:
                    break;
            }
            return 0;
        }
        case WM_MOUSEWHEEL:
            ScrollTo(top_ - GET_WHEEL_DELTA_WPARAM(wp) / WHEEL_DELTA);
            return 0;
        case WM_MOUSEMOVE:
            if (!tracking_) {
                TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, hwnd_, 0};
                tracking_ = TrackMouseEvent(&track) != FALSE;
            }
            Hover(EntryAt(GET_X_LPARAM(lp), GET_Y_LPARAM(lp)));
            return 0;
        case WM_MOUSELEAVE:
            tracking_ = false;
            Hover(0);
            return 0;
        case WM_LBUTTONUP:
            if (const int entry = EntryAt(GET_X_LPARAM(lp), GET_Y_LPARAM(lp)); entry > 0 && onChoose) onChoose(entry);
            return 0;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

void SongBlockView::Paint(HDC dc, const RECT& client) {
    const int dpi = WindowDpi(hwnd_);
    FillRect(dc, &client, Theme::DisplayBrush());
    HGDIOBJ oldFont = SelectObject(dc, Theme::UiFont(dpi));
    HGDIOBJ oldBrush = SelectObject(dc, GetStockObject(DC_BRUSH));
    HGDIOBJ oldPen = SelectObject(dc, GetStockObject(DC_PEN));
    SetBkMode(dc, TRANSPARENT);
    const int perRow = PerRow();
    const int round = Scaled(6, dpi);
    for (int row = 0; row <= VisibleRows(); ++row) {
        for (int column = 0; column < perRow; ++column) {
            const auto entry = BlockAt(top_ + row, column, perRow, static_cast<int>(lines_.size()));
            if (!entry) continue;
            const int x = Scaled(kMargin, dpi) + column * Scaled(kCellWidth, dpi);
            const int y = Scaled(kMargin, dpi) + row * Scaled(kCellHeight, dpi);
            RECT block{x, y, x + Scaled(kCellWidth - kGap, dpi), y + Scaled(kCellHeight - kGap, dpi)};
            const bool playing = *entry == current_;
            const bool hot = *entry == hot_;
            SetDCBrushColor(dc, playing ? Theme::Accent() : hot ? Theme::ButtonHot() : Theme::Panel());
            SetDCPenColor(dc, playing || hot ? Theme::Accent() : Theme::ButtonEdge());
            RoundRect(dc, block.left, block.top, block.right, block.bottom, round, round);
            wchar_t number[8];
            std::swprintf(number, 8, L"%03d", *entry);
            SetTextColor(dc, playing ? Theme::Display() : Theme::Text());
            DrawTextW(dc, number, -1, &block, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        }
    }
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldFont);
}

}  // namespace lumora
