// The cost of an action before the first request to the desktop: the arithmetic of one press.

#include "TesselCore/WindowLayout.h"
#include "TesselCore/WindowMove.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using corvid::CGRect;
using tessel::WindowAction;
using tessel::WindowMove;
namespace WindowLayout = tessel::WindowLayout;

constexpr double screenWidth = 1920;
constexpr double screenHeight = 1080;
constexpr double panelHeight = 40;

/// Screens in a row, in the screen space.
std::vector<CGRect> screensInARow(std::int64_t count) {
    std::vector<CGRect> screens;
    screens.reserve(static_cast<std::size_t>(count));
    for (std::int64_t index = 0; index < count; ++index) {
        screens.push_back({{screenWidth * static_cast<double>(index), 0}, {screenWidth, screenHeight}});
    }
    return screens;
}

/// The screens of the accessibility space, computed from those of the screen space as in every press.
std::vector<CGRect> flipped(const std::vector<CGRect>& screens) {
    std::vector<CGRect> frames;
    frames.reserve(screens.size());
    for (const CGRect& screen : screens) {
        frames.push_back(WindowLayout::flip(screen, screenHeight));
    }
    return frames;
}

void flipOfEveryScreen(benchmark::State& state) {
    const std::vector<CGRect> screens = screensInARow(state.range(0));
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(flipped(screens).data());
        benchmark::ClobberMemory();
    }
}

/// One action after the other, from the window's frame and the screens to the writes and the correction. The window is
/// on the last screen.
void wholeAction(benchmark::State& state) {
    const std::vector<CGRect> screens = screensInARow(state.range(0));
    CGRect window{{screens.back().minX() + 311, 173}, {762, 503}};
    std::size_t next = 0;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(window);
        const WindowAction action = WindowAction::allCases[next];
        next = (next + 1) % WindowAction::allCases.size();
        const std::size_t index = *WindowLayout::bestScreen(window, flipped(screens));
        CGRect visibleFrame = screens[index];
        visibleFrame.size.height -= panelHeight;
        const CGRect visible = WindowLayout::flip(visibleFrame, screenHeight);
        const CGRect target = WindowLayout::targetFrame(action, window, visible);
        const std::vector<WindowMove> steps = WindowMove::steps(window, target);
        // As if the application had kept its size: the longer path through the correction.
        const auto correction = WindowMove::correction(action, window.size, target, visible);
        benchmark::DoNotOptimize(steps.data());
        benchmark::DoNotOptimize(correction);
    }
}

BENCHMARK(flipOfEveryScreen)->Arg(1)->Arg(4)->Arg(16);
BENCHMARK(wholeAction)->Arg(1)->Arg(4)->Arg(16);

} // namespace
