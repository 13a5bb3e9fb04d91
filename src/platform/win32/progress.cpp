// Progress on Windows: the caption of a client's automation object, the
// client's progress-bar control, and a small progress window of our own.
#include "platform/progress.h"
#include "platform/win32/ole_system.h"

#include <string>

namespace brindle::platform {

namespace {

// A progress bar's messages (commctrl.h), so that nothing more is linked.
constexpr UINT kSetRange32 = WM_USER + 6;
constexpr UINT kSetPos = WM_USER + 2;
constexpr UINT kSetStep = WM_USER + 4;
constexpr UINT kStepIt = WM_USER + 5;

std::wstring wide(std::string_view text) {
    if (text.empty())
        return std::wstring();
    const int n = ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring out(static_cast<size_t>(n > 0 ? n : 0), L'\0');
    if (n > 0)
        ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), out.data(), n);
    return out;
}

// An address that may hold an automation object: past the first 64 KiB
// (where no object lives) with a readable interface table.
bool looks_like_object(intptr_t object) {
    if (object < 0x10000)
        return false;
    void *p = reinterpret_cast<void *>(object);
    if (::IsBadReadPtr(p, sizeof(void *)))
        return false;
    void *table = *static_cast<void **>(p);
    return table != nullptr && !::IsBadReadPtr(table, 7 * sizeof(void *));
}

// Lets the window paint while the copy runs.
void pump(HWND window) {
    MSG msg;
    while (::PeekMessageA(&msg, window, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&msg);
        ::DispatchMessageA(&msg);
    }
}

} // namespace

void set_display_caption(intptr_t object, std::string_view text) {
    if (!looks_like_object(object))
        return;
    IDispatch *display = reinterpret_cast<IDispatch *>(object);
    OLECHAR name[] = L"Caption";
    LPOLESTR names[] = {name};
    DISPID id = 0;
    if (FAILED(display->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)))
        return;
    const std::wstring w = wide(text);
    VARIANT value;
    ::VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = ::SysAllocStringLen(w.data(), static_cast<UINT>(w.size()));
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params{&value, &put, 1, 1};
    (void)display->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr);
    ::VariantClear(&value);
}

void progress_bar_start(intptr_t window, int32_t steps) {
    HWND bar = reinterpret_cast<HWND>(window);
    if (window == 0 || !::IsWindow(bar))
        return;
    ::SendMessageA(bar, kSetRange32, 0, steps > 0 ? steps : 1);
    ::SendMessageA(bar, kSetStep, 1, 0);
    ::SendMessageA(bar, kSetPos, 0, 0);
}

void progress_bar_step(intptr_t window) {
    HWND bar = reinterpret_cast<HWND>(window);
    if (window != 0 && ::IsWindow(bar))
        ::SendMessageA(bar, kStepIt, 0, 0);
}

ProgressWindow::ProgressWindow(std::string_view line1, std::string_view line2, std::string_view line3,
                               std::string_view line4, int32_t steps) {
    // The progress-bar class comes with the common controls library.
    if (HMODULE controls = ::LoadLibraryA("comctl32.dll")) {
        using Init = void(WINAPI *)();
        if (auto init = reinterpret_cast<Init>(reinterpret_cast<void *>(::GetProcAddress(controls, "InitCommonControls"))))
            init();
    }
    const int width = 400, height = 170;
    HWND w = ::CreateWindowExA(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, "STATIC", "", WS_POPUP | WS_CAPTION | WS_BORDER,
                               (::GetSystemMetrics(SM_CXSCREEN) - width) / 2,
                               (::GetSystemMetrics(SM_CYSCREEN) - height) / 2, width, height, nullptr, nullptr,
                               ::GetModuleHandleA(nullptr), nullptr);
    if (w == nullptr)
        return;
    window_ = w;
    const std::string_view lines[] = {line1, line2, line3, line4};
    for (int i = 0; i < 4; ++i) {
        const std::string text(lines[i]);
        ::CreateWindowExA(0, "STATIC", text.c_str(), WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP, 10, 8 + 20 * i,
                          width - 30, 18, w, nullptr, nullptr, nullptr);
    }
    HWND bar = ::CreateWindowExA(0, "msctls_progress32", "", WS_CHILD | WS_VISIBLE, 10, 92, width - 30, 18, w, nullptr,
                                 nullptr, nullptr);
    bar_ = bar;
    if (bar)
        progress_bar_start(reinterpret_cast<intptr_t>(bar), steps);
    ::ShowWindow(w, SW_SHOWNOACTIVATE);
    ::UpdateWindow(w);
    pump(w);
}

ProgressWindow::~ProgressWindow() {
    if (window_)
        ::DestroyWindow(static_cast<HWND>(window_));
}

void ProgressWindow::step() {
    if (bar_)
        progress_bar_step(reinterpret_cast<intptr_t>(bar_));
    if (window_)
        pump(static_cast<HWND>(window_));
}

} // namespace brindle::platform
