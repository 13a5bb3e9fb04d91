// Progress shown while files are copied: the caption of a client's display
// object, a progress-bar control the client owns, and a small progress
// window of the library's own. On Windows these are real; on POSIX there is
// no window system to show them on, and each does nothing.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::platform {

// Sets the "caption" property of the client's object (an automation
// object's address, as VB's ObjPtr gives it) through its automation
// interface. 0 or anything that is not a readable object is left alone.
void set_display_caption(intptr_t object, std::string_view text);

// A progress-bar control of the client, by window handle: its range set to
// 0 .. steps with a step of 1, and advanced one step at a time. A handle
// that is no window is left alone.
void progress_bar_start(intptr_t window, int32_t steps);
void progress_bar_step(intptr_t window);

// A small modeless window with four lines of text and a progress bar,
// shown while it lives.
class ProgressWindow {
  public:
    ProgressWindow(std::string_view line1, std::string_view line2, std::string_view line3, std::string_view line4,
                   int32_t steps);
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow &) = delete;
    ProgressWindow &operator=(const ProgressWindow &) = delete;
    void step();

  private:
    void *window_ = nullptr;
    void *bar_ = nullptr;
};

} // namespace brindle::platform
