#include "app/Commands.h"

#include <algorithm>

namespace lumora {

CommandState AlwaysEnabled(const UiState&) { return {}; }
CommandState CheckedWhileLyricsWindowShown(const UiState& ui) { return {true, ui.lyricsWindowShown}; }
CommandState CheckedWhilePlaylistShown(const UiState& ui) { return {true, ui.playlistShown}; }
CommandState NeedsSelectedEntry(const UiState& ui) { return {ui.selectedEntry > 0, false}; }

void CommandTable::Add(Command command) {
    auto same = std::find_if(commands_.begin(), commands_.end(), [&](const Command& c) { return c.id == command.id; });
    if (same != commands_.end()) {
        *same = std::move(command);
    } else {
        commands_.push_back(std::move(command));
    }
}

const Command* CommandTable::Find(int id) const {
    auto it = std::find_if(commands_.begin(), commands_.end(), [&](const Command& c) { return c.id == id; });
    return it == commands_.end() ? nullptr : &*it;
}

bool CommandTable::Run(int id, const UiState& ui) const {
    const Command* command = Find(id);
    if (!command || !command->action || !command->state(ui).enabled) return false;
    command->action(ui);
    return true;
}

std::vector<MenuLine> CommandTable::Menu(std::span<const MenuSlot> layout, const UiState& ui) const {
    std::vector<MenuLine> lines;
    for (const MenuSlot& slot : layout) {
        if (slot.kind != MenuSlot::Kind::Item) {
            lines.push_back({slot.kind, 0, std::string(slot.text), {}});
            continue;
        }
        if (const Command* command = Find(slot.id)) {
            lines.push_back({slot.kind, slot.id, std::string(command->menuText), command->state(ui)});
        }
    }
    return lines;
}

}  // namespace lumora
