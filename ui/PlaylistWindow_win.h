#pragma once
// The playlist window "《Lumora》文件列表": one line an entry, docked to the main window's right
// edge until the user drags it away, with its pop-up menu (remove, move, search).
#include <windows.h>

#include <string>
#include <vector>

namespace lumora {

class MainWindow;
class RegistryWrapper;
class SettingsStore;

class PlaylistWindow {
public:
    PlaylistWindow() = default;
    PlaylistWindow(const PlaylistWindow&) = delete;
    PlaylistWindow& operator=(const PlaylistWindow&) = delete;

    bool Create(MainWindow& main, HWND owner);
    HWND Handle() const { return hwnd_; }
    void SetLines(const std::vector<std::string>& lines);
    void Select(int index);
    void SetCaption(const std::string& caption);
    // The information tip on the list ("L22" "1": the classic tip, otherwise a balloon).
    void CreateInfoTip(bool classic);
    void Toggle();
    // Follows the main window while docked.
    void FollowOwner();
    // The position kept between runs ("F4L", "F4T", "F4W", "F4H", in twips).
    void Restore(const SettingsStore& settings, RegistryWrapper& registry);
    void Save(RegistryWrapper& registry);

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    LRESULT Handle(UINT msg, WPARAM wp, LPARAM lp);
    int SelectedIndex() const;
    void OnContextMenu(int x, int y);
    void OnMoving(RECT& r);

    MainWindow* main_ = nullptr;
    HWND hwnd_ = nullptr;
    HWND owner_ = nullptr;
    HWND lines_ = nullptr;
    HWND infoTip_ = nullptr;
    void UpdateInfoTip();
    bool docked_ = true;
};

}  // namespace lumora
