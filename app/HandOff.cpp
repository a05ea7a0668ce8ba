#include "app/HandOff.h"

#include <algorithm>

#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

constexpr size_t kFixedBytes = 12;

void PutLittleEndian(std::string& bytes, unsigned long long value, int count) {
    for (int i = 0; i < count; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

unsigned long long TakeLittleEndian(std::string_view bytes, size_t at, int count) {
    unsigned long long value = 0;
    for (int i = count - 1; i >= 0; --i)
        value = (value << 8) | static_cast<unsigned char>(bytes[at + static_cast<size_t>(i)]);
    return value;
}

}  // namespace

std::string EncodeHandOff(const HandOffMessage& message) {
    std::string bytes;
    PutLittleEndian(bytes, message.process, 4);
    PutLittleEndian(bytes, static_cast<unsigned long long>(message.startedMs), 8);
    return bytes + message.argument;
}

std::optional<HandOffMessage> DecodeHandOff(unsigned kind, std::string_view bytes) {
    const bool known =
        kind == static_cast<unsigned>(HandOffKind::Argument) || kind == static_cast<unsigned>(HandOffKind::Withdraw);
    if (!known || bytes.size() < kFixedBytes) return std::nullopt;
    HandOffMessage message;
    message.kind = static_cast<HandOffKind>(kind);
    message.process = static_cast<unsigned long>(TakeLittleEndian(bytes, 0, 4));
    message.startedMs = static_cast<long long>(TakeLittleEndian(bytes, 4, 8));
    message.argument = std::string(bytes.substr(kFixedBytes));
    return message;
}

void HandOffBatch::Receive(const HandOffMessage& message, long long nowMs) {
    lastHeardMs_ = nowMs;
    heard_.push_back(message);
}

bool HandOffBatch::StartedTogether(long long startedMs, const std::vector<StartedProcess>& running) {
    return std::any_of(running.begin(), running.end(), [&](const StartedProcess& p) {
        return p.startedMs >= startedMs - kTogetherMs && p.startedMs <= startedMs + kTogetherMs;
    });
}

std::optional<HandOffAction> HandOffBatch::Ready(long long nowMs, const SettingsStore& settings,
                                                 const std::vector<StartedProcess>& running) {
    if (heard_.empty()) return std::nullopt;
    // The batch spans its starts, each within kTogetherMs of another: a process that started inside that
    // span and has not spoken yet belongs to it too, and widens it in turn.
    long long first = heard_.front().startedMs, last = first;
    for (const auto& m : heard_) first = std::min(first, m.startedMs), last = std::max(last, m.startedMs);
    std::vector<StartedProcess> silent;
    for (const auto& p : running) {
        const bool spoke = std::any_of(heard_.begin(), heard_.end(), [&](const auto& m) { return m.process == p.id; });
        if (!spoke) silent.push_back(p);
    }
    std::sort(silent.begin(), silent.end(), [](const auto& a, const auto& b) { return a.startedMs < b.startedMs; });
    bool awaited = false;
    for (const auto& p : silent) {
        if (p.startedMs >= first - kTogetherMs && p.startedMs <= last + kTogetherMs) {
            awaited = true;
            last = std::max(last, p.startedMs);
        }
    }
    const bool closed = !awaited && nowMs >= last + kTogetherMs;
    if (!closed && nowMs - lastHeardMs_ < kLongestWaitMs) return std::nullopt;

    HandOffAction action;
    for (auto& m : heard_) {
        if (m.kind != HandOffKind::Argument) continue;
        if (m.argument == "*") {
            action.bringToFront = true;
        } else {
            action.open.push_back(std::move(m.argument));
        }
    }
    heard_.clear();
    if (settings.Text(opt::kSamePlayer) != "1") return HandOffAction{};
    // "使用同一播放器时，播放新的媒体文件或列表文件时返回主界面"
    if (!action.open.empty() && settings.Text(opt::kSamePlayerShowsMain) == "1") action.bringToFront = true;
    return action;
}

}  // namespace lumora
