#include "win32/TaskbarProgress.h"

#include <objbase.h>

namespace quarn {

void TaskbarProgress::Load() noexcept {
    loaded_ = true;
    ITaskbarList3* created = nullptr;
    if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                                reinterpret_cast<void**>(&created))))
        return;
    taskbar_.reset(created);
    if (FAILED(taskbar_->HrInit()))
        taskbar_.reset();
}

void TaskbarProgress::Show(HWND window, bool active, std::int32_t value, std::int32_t maximum) noexcept {
    if (active == shownActive_ && (!active || (value == shownValue_ && maximum == shownMaximum_)))
        return;
    if (!loaded_)
        Load();
    shownActive_ = active;
    shownValue_ = value;
    shownMaximum_ = maximum;
    if (!taskbar_)
        return;
    if (active)
        taskbar_->SetProgressValue(window, static_cast<ULONGLONG>(value), static_cast<ULONGLONG>(maximum));
    else
        taskbar_->SetProgressState(window, TBPF_NOPROGRESS);
}

} // namespace quarn
