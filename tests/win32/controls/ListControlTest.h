#pragma once

// The control of a list with three columns, the third of which names the rows.

#include "tests/win32/harness/ControlHost.h"
#include "tests/win32/harness/PaintedPixels.h"
#include "win32/controls/ListViewControl.h"

#include <commctrl.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {

class ListControlTest : public testing::Test {
  protected:
    ListControlTest() {
        model.columns.Reset(3);
        model.columns[1] = {.width = 450};
        model.columns[2] = {.text = "Address", .width = 1500};
        model.columns[3] = {.text = "Name", .width = 3000};
        control.Create(host.Handle(), 1, "Servers", ListViewControl::Selection::SeveralRows, Dpi(96));
        control.MoveTo({0, 0, 600, 400});
        host.Watch(control);
    }

    void AddRows(std::initializer_list<std::string> names) {
        for (const std::string& name : names) {
            const std::int32_t row = model.Add();
            model.Cell(row, 3).text = name;
        }
        control.Flush();
    }

    void AddManyRows(int count) {
        for (int i = 0; i < count; ++i)
            model.Add();
        control.Flush();
    }

    HWND Header() const {
        return reinterpret_cast<HWND>(SendMessageA(control.Handle(), LVM_GETHEADER, 0, 0));
    }
    int Count() const { return static_cast<int>(SendMessageA(control.Handle(), LVM_GETITEMCOUNT, 0, 0)); }
    int SelectedCount() const {
        return static_cast<int>(SendMessageA(control.Handle(), LVM_GETSELECTEDCOUNT, 0, 0));
    }
    bool IsSelected(std::int32_t row) const { return (StateOf(row) & LVIS_SELECTED) != 0; }
    bool IsFocused(std::int32_t row) const { return (StateOf(row) & LVIS_FOCUSED) != 0; }

    std::string TextOf(std::int32_t row, std::int32_t column) const {
        char text[300] = "";
        LVITEMA item{};
        item.iSubItem = SubItem(column);
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(control.Handle(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }

    // The control's number of the column that is displayed at this place, from 1.
    int SubItem(std::int32_t column) const {
        int order[3] = {-1, -1, -1};
        SendMessageA(control.Handle(), LVM_GETCOLUMNORDERARRAY, 3, reinterpret_cast<LPARAM>(order));
        return order[column - 1];
    }

    // As the user does it, by the control itself.
    void SelectInControl(std::int32_t row, bool selected = true) {
        LVITEMA item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = selected ? item.stateMask : 0;
        SendMessageA(control.Handle(), LVM_SETITEMSTATE, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&item));
    }

    int Find(const char* beginning, int start = -1, UINT flags = LVFI_PARTIAL | LVFI_STRING) const {
        LVFINDINFOA search{};
        search.flags = flags | LVFI_WRAP;
        search.psz = beginning;
        return static_cast<int>(SendMessageA(control.Handle(), LVM_FINDITEMA, static_cast<WPARAM>(start),
                                             reinterpret_cast<LPARAM>(&search))) +
               1;
    }

    // The vertical lines of a cell, counted from its left edge, on which something is painted.
    std::vector<int> PaintedLines(std::int32_t row, std::int32_t column) const {
        RECT cell{LVIR_BOUNDS, 0, 0, 0}; // the whole row
        SendMessageA(control.Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&cell));
        RECT header{};
        SendMessageA(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(SubItem(column)),
                     reinterpret_cast<LPARAM>(&header));
        cell.left = header.left;
        cell.right = header.right;
        const HDC screen = GetDC(control.Handle());
        const HDC canvas = CreateCompatibleDC(screen);
        const HBITMAP picture = CreateCompatibleBitmap(screen, cell.right, cell.bottom);
        const HGDIOBJ before = SelectObject(canvas, picture);
        SendMessageA(control.Handle(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas), PRF_CLIENT);
        const COLORREF ground = GetPixel(canvas, cell.left, cell.top);
        std::vector<int> lines;
        for (int x = cell.left; x < cell.right; ++x) {
            bool painted = false;
            for (int y = cell.top; y < cell.bottom; ++y)
                painted = painted || GetPixel(canvas, x, y) != ground;
            if (painted)
                lines.push_back(x - cell.left);
        }
        SelectObject(canvas, before);
        DeleteObject(picture);
        DeleteDC(canvas);
        ReleaseDC(control.Handle(), screen);
        return lines;
    }

    // What is on the screen, and what a repaint of everything makes of it.
    void ExpectNothingLeftToRepaint() {
        ControlHost::RunPendingEvents();
        const PaintedPixels shown(control.Handle());
        RedrawWindow(control.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        EXPECT_EQ(shown, PaintedPixels(control.Handle()));
    }

    RECT RowBounds(std::int32_t row) const {
        RECT bounds{LVIR_BOUNDS, 0, 0, 0};
        SendMessageA(control.Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&bounds));
        return bounds;
    }

    int ColumnWidth(std::int32_t column) const {
        return static_cast<int>(
            SendMessageA(control.Handle(), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(SubItem(column)), 0));
    }

    // The tooltip for the place under the mouse, which is a number of pixels right of a column's edge. Notes
    // its greatest width.
    std::string ToolTipOver(std::int32_t row, std::int32_t column, int right = 5) {
        const auto header = reinterpret_cast<HWND>(SendMessageA(control.Handle(), LVM_GETHEADER, 0, 0));
        RECT bounds{};
        SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(SubItem(column)),
                     reinterpret_cast<LPARAM>(&bounds));
        SendMessageA(control.Handle(), WM_MOUSEMOVE, 0,
                     MAKELPARAM(bounds.left + right, RowBounds(row).top + 3));
        for (HWND tip = nullptr; (tip = FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)) != nullptr;) {
            char text[300] = "";
            TTTOOLINFOA tool{};
            tool.cbSize = TTTOOLINFOA_V1_SIZE;
            tool.hwnd = control.Handle();
            tool.uId = 1;
            tool.lpszText = text;
            DWORD process = 0;
            GetWindowThreadProcessId(tip, &process);
            if (process == GetCurrentProcessId() &&
                SendMessageA(tip, TTM_GETTOOLINFOA, 0, reinterpret_cast<LPARAM>(&tool)) != 0) {
                SendMessageA(tip, TTM_GETTEXTA, sizeof text, reinterpret_cast<LPARAM>(&tool));
                greatestToolTipWidth = SendMessageA(tip, TTM_GETMAXTIPWIDTH, 0, 0);
                return text;
            }
        }
        return "no tooltip";
    }

    HDITEMA HeaderOf(std::int32_t column) const {
        HDITEMA header{};
        header.mask = HDI_FORMAT | HDI_IMAGE;
        SendMessageA(Header(), HDM_GETITEMA, static_cast<WPARAM>(SubItem(column)),
                     reinterpret_cast<LPARAM>(&header));
        return header;
    }
    int HeaderFormat(std::int32_t column) const { return HeaderOf(column).fmt; }
    int HeaderImage(std::int32_t column) const { return HeaderOf(column).iImage; }

    LRESULT greatestToolTipWidth = 0; // -1: none
    ListView model;
    ListViewControl control{model, 3};
    ControlHost host;

  private:
    UINT StateOf(std::int32_t row) const {
        return static_cast<UINT>(SendMessageA(control.Handle(), LVM_GETITEMSTATE,
                                              static_cast<WPARAM>(row - 1), LVIS_SELECTED | LVIS_FOCUSED));
    }
};

} // namespace quarn
