// What the copies show on Windows: the caption of the client's display
// object (cFilesCopyExt), the client's progress bar (cPBFileCopy) and the
// library's own progress window (cDBFileCopy). Under Wine the test script
// selects Wine's windowless display driver, so windows are really made,
// sized, shown and destroyed without a screen. On Linux nothing is shown;
// the copies themselves are tested with the other copy exports.
#ifdef _WIN32

#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <windows.h>

#include <oaidl.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace brindle::test;

namespace {

class ProgressDisplay : public TempDirTest {};

// A display object as a VB label is one to the library: an automation
// object with a Caption property. It keeps every value put into Caption, and
// refuses anything else that is asked of it, as a strict object would.
class RecordingLabel final : public IDispatch {
  public:
    std::vector<std::string> captions;
    int wrong_calls = 0;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **out) override {
        if (iid == IID_IUnknown || iid == IID_IDispatch) {
            *out = this;
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR *names, UINT count, LCID, DISPID *ids) override {
        // Automation names are matched without regard to case.
        if (count != 1 || _wcsicmp(names[0], L"caption") != 0) {
            ++wrong_calls;
            ids[0] = DISPID_UNKNOWN;
            return DISP_E_UNKNOWNNAME;
        }
        ids[0] = kCaption;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS *params, VARIANT *, EXCEPINFO *,
                                     UINT *) override {
        if (id != kCaption || flags != DISPATCH_PROPERTYPUT || params->cArgs != 1 || params->cNamedArgs != 1 ||
            params->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT || V_VT(&params->rgvarg[0]) != VT_BSTR) {
            ++wrong_calls;
            return DISP_E_MEMBERNOTFOUND;
        }
        const BSTR text = V_BSTR(&params->rgvarg[0]);
        std::string narrow;
        for (UINT i = 0; i < SysStringLen(text); ++i)
            narrow += static_cast<char>(text[i]); // the test's names are ASCII
        captions.push_back(narrow);
        return S_OK;
    }

  private:
    static constexpr DISPID kCaption = 7;
};

intptr_t obj_ptr(RecordingLabel &label) { return reinterpret_cast<intptr_t>(static_cast<IDispatch *>(&label)); }

TEST_F(ProgressDisplay, SetCopyPutsEachFileIntoTheCaption) {
    CreateDirectoryA("s", nullptr);
    CreateDirectoryA("t", nullptr);
    write_file("s\\a.txt", "a");
    write_file("s\\b.txt", "bb");
    write_file("s\\.hidden", "x"); // names beginning with a full stop are left out
    Bstr s("s"), t("t"), all("*");

    RecordingLabel label;
    EXPECT_EQ(cFilesCopyExt(obj_ptr(label), s.ref(), t.ref(), all.ref(), 0), 2);
    EXPECT_EQ(label.wrong_calls, 0);
    ASSERT_EQ(label.captions.size(), 2u);
    // The directory order of the system decides which comes first.
    std::vector<std::string> sorted = label.captions;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted[0], "s\\a.txt >>> t\\a.txt");
    EXPECT_EQ(sorted[1], "s\\b.txt >>> t\\b.txt");
    EXPECT_EQ(read_file("t\\b.txt"), "bb");

    // Option 8: the target on a line of its own.
    RecordingLabel two_lines;
    EXPECT_EQ(cFilesCopyExt(obj_ptr(two_lines), s.ref(), t.ref(), all.ref(), 1 + 8), 2);
    ASSERT_EQ(two_lines.captions.size(), 2u);
    std::sort(two_lines.captions.begin(), two_lines.captions.end());
    EXPECT_EQ(two_lines.captions[0], "s\\a.txt\r\n >>> t\\a.txt");

    // A failed copy (the target exists, no option 1) was still announced.
    RecordingLabel refused;
    EXPECT_EQ(cFilesCopyExt(obj_ptr(refused), s.ref(), t.ref(), all.ref(), 0), -2);
    EXPECT_EQ(refused.captions.size(), 2u);
}

TEST_F(ProgressDisplay, SetMoveNeverTouchesTheDisplay) {
    CreateDirectoryA("s", nullptr);
    CreateDirectoryA("t", nullptr);
    write_file("s\\a.txt", "a");
    Bstr s("s"), t("t"), all("*");
    RecordingLabel label;
    EXPECT_EQ(cFilesMoveExt(obj_ptr(label), s.ref(), t.ref(), all.ref(), 0), 1);
    EXPECT_EQ(read_file("t\\a.txt"), "a");
    EXPECT_TRUE(label.captions.empty());
    EXPECT_EQ(label.wrong_calls, 0);
}

TEST_F(ProgressDisplay, SmallNumbersAreNoDisplayObject) {
    // Whatever a confused caller passes as the object (a Long, a handle),
    // the files are still copied and nothing is called through it.
    CreateDirectoryA("s", nullptr);
    CreateDirectoryA("t", nullptr);
    write_file("s\\a.txt", "a");
    Bstr s("s"), t("t"), all("*");
    for (intptr_t junk : {intptr_t{1}, intptr_t{-1}, intptr_t{0xFFFF}}) {
        SCOPED_TRACE(junk);
        EXPECT_EQ(cFilesCopyExt(junk, s.ref(), t.ref(), all.ref(), 1), 1);
    }
    EXPECT_EQ(read_file("t\\a.txt"), "a");
}

// Messages of a progress-bar control (commctrl.h).
constexpr UINT kSetRange32 = WM_USER + 6;
constexpr UINT kStepIt = WM_USER + 5;
constexpr UINT kGetPos = WM_USER + 8;

// What the hooks of the current thread saw while a copy ran.
struct Seen {
    std::vector<std::string> texts; // static controls made, in order
    HWND top = nullptr;             // the progress window
    std::string bar_class;
    bool top_destroyed = false;
    LPARAM range = -1;
    int steps = 0;
    int steps_while_visible = 0;
};
Seen *g_seen = nullptr;
HHOOK g_cbt = nullptr, g_calls = nullptr;

std::string class_of(HWND w) {
    char name[64] = {};
    GetClassNameA(w, name, sizeof name);
    return name;
}

LRESULT CALLBACK on_cbt(int code, WPARAM wparam, LPARAM lparam) {
    if (code == HCBT_CREATEWND) {
        const CREATESTRUCTA *cs = reinterpret_cast<CBT_CREATEWNDA *>(lparam)->lpcs;
        HWND w = reinterpret_cast<HWND>(wparam);
        // The system makes windows of its own too (an input-method window
        // for the thread); ours is a top-level static window.
        if (cs->hwndParent == nullptr && class_of(w) == "Static" && g_seen->top == nullptr)
            g_seen->top = w;
        else if (cs->hwndParent == g_seen->top && cs->lpszName != nullptr &&
                 HIWORD(reinterpret_cast<uintptr_t>(cs->lpszName)) != 0 && class_of(w) == "Static")
            g_seen->texts.emplace_back(cs->lpszName);
    } else if (code == HCBT_DESTROYWND && reinterpret_cast<HWND>(wparam) == g_seen->top && g_seen->top) {
        g_seen->top_destroyed = true;
    }
    return CallNextHookEx(g_cbt, code, wparam, lparam);
}

LRESULT CALLBACK on_call(int code, WPARAM wparam, LPARAM lparam) {
    const CWPSTRUCT *m = reinterpret_cast<CWPSTRUCT *>(lparam);
    if (code == HC_ACTION && g_seen->top && GetParent(m->hwnd) == g_seen->top) {
        if (m->message == kSetRange32) {
            g_seen->bar_class = class_of(m->hwnd);
            g_seen->range = m->lParam;
        } else if (m->message == kStepIt) {
            ++g_seen->steps;
            if (IsWindowVisible(g_seen->top))
                ++g_seen->steps_while_visible;
        }
    }
    return CallNextHookEx(g_calls, code, wparam, lparam);
}

// Runs one call with both hooks on the current thread.
template <class Call> Seen watch(Call call) {
    Seen seen;
    g_seen = &seen;
    g_cbt = SetWindowsHookExA(WH_CBT, on_cbt, nullptr, GetCurrentThreadId());
    g_calls = SetWindowsHookExA(WH_CALLWNDPROC, on_call, nullptr, GetCurrentThreadId());
    EXPECT_NE(g_cbt, nullptr);
    EXPECT_NE(g_calls, nullptr);
    call();
    UnhookWindowsHookEx(g_cbt);
    UnhookWindowsHookEx(g_calls);
    g_seen = nullptr;
    return seen;
}

TEST_F(ProgressDisplay, ProgressWindowShowsFourTextsAndOneStepPerBlock) {
    const std::string body(5 * 32768 + 100, 'q'); // five whole blocks and a part
    write_file("src.dat", body);
    Bstr a("Copying"), b("src.dat"), c("to"), d("dst.dat"), s("src.dat"), t("dst.dat");
    int16_t result = 0;
    const Seen seen = watch([&] { result = cDBFileCopy(a.ref(), b.ref(), c.ref(), d.ref(), s.ref(), t.ref()); });
    EXPECT_EQ(result, -1);
    EXPECT_EQ(read_file("dst.dat"), body);
    ASSERT_NE(seen.top, nullptr) << "no progress window was made";
    EXPECT_EQ(seen.texts, (std::vector<std::string>{"Copying", "src.dat", "to", "dst.dat"}));
    EXPECT_EQ(seen.bar_class, "msctls_progress32");
    EXPECT_EQ(seen.range, 5); // the size divided by 32,768
    EXPECT_EQ(seen.steps, 6); // one per block read
    EXPECT_EQ(seen.steps_while_visible, 6);
    EXPECT_TRUE(seen.top_destroyed);
    EXPECT_FALSE(IsWindow(seen.top)); // gone when the copy returns
}

TEST_F(ProgressDisplay, RefusedCopiesShowNoWindow) {
    write_file("src.dat", std::string(70000, 'x'));
    CreateDirectoryA("dir", nullptr);
    Bstr a("1"), b("2"), c("3"), d("4"), s("src.dat"), t("dir"), same("SRC.DAT"), missing("missing.dat");
    // The window comes after both files are open: a target that cannot be
    // made, the source under another case, a missing source show nothing.
    for (Bstr *target : {&t, &same}) {
        const Seen seen =
            watch([&] { EXPECT_EQ(cDBFileCopy(a.ref(), b.ref(), c.ref(), d.ref(), s.ref(), target->ref()), 0); });
        EXPECT_EQ(seen.top, nullptr);
    }
    const Seen seen = watch([&] { EXPECT_EQ(cDBFileCopy(a.ref(), b.ref(), c.ref(), d.ref(), missing.ref(), t.ref()), 0); });
    EXPECT_EQ(seen.top, nullptr);
    EXPECT_EQ(read_file("src.dat"), std::string(70000, 'x'));
}

// A progress bar of the client's own: a window of a class made here that
// counts the bar messages it is sent.
struct ClientBar {
    LPARAM range = -1;
    int steps = 0;
};
ClientBar *g_bar = nullptr;

LRESULT CALLBACK client_bar_proc(HWND w, UINT message, WPARAM wparam, LPARAM lparam) {
    if (g_bar && message == kSetRange32)
        g_bar->range = lparam;
    if (g_bar && message == kStepIt)
        ++g_bar->steps;
    if (message == kGetPos)
        return g_bar ? g_bar->steps : 0;
    return DefWindowProcA(w, message, wparam, lparam);
}

TEST_F(ProgressDisplay, ClientProgressBarStepsOncePerBlock) {
    WNDCLASSA wc = {};
    wc.lpfnWndProc = client_bar_proc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "BrindleTestBar";
    RegisterClassA(&wc);
    HWND bar = CreateWindowExA(0, "BrindleTestBar", "", WS_POPUP, 0, 0, 100, 10, nullptr, nullptr,
                               GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(bar, nullptr) << "no window could be made (is a display driver configured?)";
    ClientBar seen;
    g_bar = &seen;
    const std::string body(3 * 32768, 'z'); // exactly three blocks
    write_file("src.dat", body);
    Bstr s("src.dat"), t("dst.dat");
    EXPECT_EQ(cPBFileCopy(reinterpret_cast<intptr_t>(bar), s.ref(), t.ref()), -1);
    EXPECT_EQ(seen.range, 3);
    EXPECT_EQ(seen.steps, 3);
    EXPECT_EQ(read_file("dst.dat"), body);
    g_bar = nullptr;
    DestroyWindow(bar);
    // A handle that is no window is left alone; the copy still happens.
    Bstr t2("dst2.dat");
    EXPECT_EQ(cPBFileCopy(reinterpret_cast<intptr_t>(bar), s.ref(), t2.ref()), -1);
    EXPECT_EQ(read_file("dst2.dat"), body);
}

} // namespace

#endif
