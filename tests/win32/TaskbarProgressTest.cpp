#include "win32/TaskbarProgress.h"

#include "tests/win32/harness/ReplacedImport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>
#include <string>
#include <utility>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> calls;
HRESULT creation = S_OK;
HRESULT initialisation = S_OK;

// COM interfaces have no virtual destructor: objects are released.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Notes the calls of the program; it makes no others.
class FakeTaskbar final : public ITaskbarList3 {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override {
        calls.emplace_back("release");
        return 0;
    }
    HRESULT STDMETHODCALLTYPE HrInit() override {
        calls.emplace_back("init");
        return initialisation;
    }
    HRESULT STDMETHODCALLTYPE SetProgressValue(HWND, ULONGLONG value, ULONGLONG maximum) override {
        calls.push_back(std::to_string(value) + " of " + std::to_string(maximum));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetProgressState(HWND, TBPFLAG state) override {
        calls.push_back("state " + std::to_string(state));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE AddTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ActivateTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetActiveAlt(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE MarkFullscreenWindow(HWND, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RegisterTab(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnregisterTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTabOrder(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTabActive(HWND, HWND, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ThumbBarSetImageList(HWND, HIMAGELIST) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetOverlayIcon(HWND, HICON, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetThumbnailTooltip(HWND, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetThumbnailClip(HWND, RECT*) override { return E_NOTIMPL; }
};

#pragma GCC diagnostic pop

HRESULT WINAPI Create(REFCLSID kind, IUnknown*, DWORD, REFIID, void** created) {
    static FakeTaskbar taskbar;
    EXPECT_TRUE(IsEqualGUID(kind, CLSID_TaskbarList));
    calls.emplace_back("create");
    if (SUCCEEDED(creation))
        *created = static_cast<ITaskbarList3*>(&taskbar);
    return creation;
}

class TaskbarProgressTest : public ::testing::Test {
  protected:
    TaskbarProgressTest() {
        calls.clear();
        creation = S_OK;
        initialisation = S_OK;
    }

    // What the calls were since the last time.
    static std::vector<std::string> Taken() { return std::exchange(calls, {}); }

    ReplacedImport create_{&CoCreateInstance, &Create};
};

TEST_F(TaskbarProgressTest, ShowsEachChangeOnce) {
    {
        TaskbarProgress progress;
        progress.Show(nullptr, false, 0, 0);
        EXPECT_THAT(Taken(), IsEmpty());
        progress.Show(nullptr, true, 1, 10);
        EXPECT_THAT(Taken(), ElementsAre("create", "init", "1 of 10"));
        progress.Show(nullptr, true, 1, 10);
        EXPECT_THAT(Taken(), IsEmpty());
        progress.Show(nullptr, true, 2, 10);
        progress.Show(nullptr, true, 2, 20);
        EXPECT_THAT(Taken(), ElementsAre("2 of 10", "2 of 20"));
        progress.Show(nullptr, false, 2, 20);
        progress.Show(nullptr, false, 3, 30);
        EXPECT_THAT(Taken(), ElementsAre("state " + std::to_string(TBPF_NOPROGRESS)));
        progress.Show(nullptr, true, 3, 30);
        EXPECT_THAT(Taken(), ElementsAre("3 of 30"));
    }
    EXPECT_THAT(Taken(), ElementsAre("release"));
}

TEST_F(TaskbarProgressTest, AsksASystemWithoutItOnce) {
    creation = REGDB_E_CLASSNOTREG;
    {
        TaskbarProgress progress;
        progress.Show(nullptr, true, 1, 10);
        progress.Show(nullptr, true, 2, 10);
    }
    EXPECT_THAT(Taken(), ElementsAre("create"));
    creation = S_OK;
    initialisation = E_NOTIMPL;
    {
        TaskbarProgress progress;
        progress.Show(nullptr, true, 1, 10);
        progress.Show(nullptr, false, 2, 10);
    }
    EXPECT_THAT(Taken(), ElementsAre("create", "init", "release"));
}

} // namespace
} // namespace quarn
