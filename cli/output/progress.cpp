#include "cli/output/progress.h"

#include <algorithm>
#include <string>

namespace lintara::cli {
namespace {

using namespace std::chrono_literals;

constexpr auto Patience = 500ms;
constexpr auto BetweenDrawings = 50ms;
constexpr std::size_t BarWidth = 30;

}  // namespace

Progress::Progress(Streams& streams, bool enabled)
    : streams_(streams), enabled_(enabled && streams.errIsTerminal) {
    if (enabled_) {
        start_ = lastDrawn_ = streams_.clock();
    }
}

void Progress::Update(std::string_view stage, std::size_t done, std::size_t total) {
    if (!enabled_ || total == 0) {
        return;
    }
    const Time now = streams_.clock();
    if (now - start_ >= Patience && (!visible_ || now - lastDrawn_ >= BetweenDrawings)) {
        lastDrawn_ = now;
        Draw(stage, std::min(done, total), total);
    }
}

void Progress::Draw(std::string_view stage, std::size_t done, std::size_t total) {
    const std::size_t filled = done * BarWidth / total;
    const std::string percent = std::to_string(done * 100 / total);
    std::string line = "\r[" + std::string(filled, '#') + std::string(BarWidth - filled, ' ') + "] " +
                       std::string(3 - std::min<std::size_t>(3, percent.size()), ' ') + percent + "% ";
    line += stage;
    line += "\x1b[K";
    streams_.err.Write(line);
    visible_ = true;
}

void Progress::Clear() {
    if (visible_) {
        streams_.err.Write("\r\x1b[K");
        visible_ = false;
    }
}

}  // namespace lintara::cli
