// No window system here: progress is not shown, the work is done all the same.
#include "platform/progress.h"

namespace brindle::platform {

void set_display_caption(intptr_t, std::string_view) {}
void progress_bar_start(intptr_t, int32_t) {}
void progress_bar_step(intptr_t) {}

ProgressWindow::ProgressWindow(std::string_view, std::string_view, std::string_view, std::string_view, int32_t) {}
ProgressWindow::~ProgressWindow() = default;
void ProgressWindow::step() {}

} // namespace brindle::platform
