// A window with one control of each kind that the driver operates. Its status bar shows what arrived, so that
// the driver's tests can compare it with what was sent.

#include "tests/e2e/standin/ids.h"

#include <windows.h>

#include <commctrl.h>

#include <initializer_list>
#include <string>

namespace {

HWND window, tree, list, toolbar, status, progress;
bool sortedDown = false;

HWND Child(const char* className, DWORD style, int id, int left, int top, int width, int height) {
    return CreateWindowExA(0, className, "", WS_CHILD | WS_VISIBLE | style, left, top, width, height, window,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                           nullptr);
}

void Tell(const std::string& event) {
    SendMessageA(status, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(event.c_str()));
}

HTREEITEM AddNode(HTREEITEM parent, const char* text) {
    std::string copy = text;
    TVINSERTSTRUCTA insert{};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT;
    insert.item.pszText = copy.data();
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
}

void AddColumn(int index, const char* caption) {
    std::string copy = caption;
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = copy.data();
    column.cx = 100;
    SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void CreateControls() {
    toolbar = Child(TOOLBARCLASSNAMEA, 0, ID_toolbar, 0, 0, 0, 0);
    SendMessageA(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    const TBBUTTON buttons[] = {{I_IMAGENONE, ID_ask, TBSTATE_ENABLED, BTNS_BUTTON, {}, 0, 0},
                                {0, 0, 0, BTNS_SEP, {}, 0, 0},
                                {I_IMAGENONE, ID_disabled, 0, BTNS_BUTTON, {}, 0, 0}};
    SendMessageA(toolbar, TB_ADDBUTTONSA, 3, reinterpret_cast<LPARAM>(buttons));

    tree = Child(WC_TREEVIEWA, TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT, ID_tree, 0, 40, 200, 200);
    const HTREEITEM games = AddNode(TVI_ROOT, "Games");
    AddNode(games, "First & last");
    AddNode(TVI_ROOT, "Filters");

    // The rows are stored here and not in the control, as in the program under test.
    list = Child(WC_LISTVIEWA, LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, ID_list, 210, 40, 400, 200);
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT);
    AddColumn(0, "");
    AddColumn(1, "Name");

    status = Child(STATUSCLASSNAMEA, 0, ID_status, 0, 0, 0, 0);
    int edges[] = {300, -1};
    SendMessageA(status, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(edges));
    SendMessageA(status, SB_SETTEXTA, 1, reinterpret_cast<LPARAM>("second"));
    progress = Child(PROGRESS_CLASSA, 0, ID_progress, 210, 250, 200, 20);
    SendMessageA(progress, PBM_SETRANGE32, 0, 60);
    SendMessageA(progress, PBM_SETPOS, 17, 0);
}

void GiveText(NMLVDISPINFOA& info) {
    if (!(info.item.mask & LVIF_TEXT))
        return;
    // A tab, a backslash and a byte above 127 must not break a line of the driver.
    const std::string text =
        info.item.iSubItem == 0 ? "" : "row\t" + std::to_string(info.item.iItem + 1) + "\\\xe9";
    lstrcpynA(info.item.pszText, text.c_str(), info.item.cchTextMax);
}

void SortBy(int column) {
    HDITEMA item{};
    item.mask = HDI_FORMAT;
    item.fmt = HDF_STRING | (sortedDown ? HDF_SORTDOWN : HDF_SORTUP);
    sortedDown = !sortedDown;
    const auto header = reinterpret_cast<HWND>(SendMessageA(list, LVM_GETHEADER, 0, 0));
    SendMessageA(header, HDM_SETITEMA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    Tell("sorted " + std::to_string(column));
}

void OnListNotification(const NMHDR& header) {
    const auto& item = reinterpret_cast<const NMITEMACTIVATE&>(header);
    const std::string row = std::to_string(item.iItem + 1);
    if (header.code == LVN_GETDISPINFOA)
        GiveText(reinterpret_cast<NMLVDISPINFOA&>(const_cast<NMHDR&>(header)));
    else if (header.code == NM_CLICK)
        Tell("clicked " + row);
    else if (header.code == NM_DBLCLK)
        Tell("double-clicked " + row);
    else if (header.code == NM_RCLICK)
        Tell("right-clicked " + row);
    else if (header.code == LVN_COLUMNCLICK)
        SortBy(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
    else if (header.code == LVN_KEYDOWN)
        Tell("key " + std::to_string(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey));
}

INT_PTR CALLBACK OnDialogMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        for (const char* item : {"first", "second", "third"}) {
            SendDlgItemMessageA(dialog, ID_combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
            SendDlgItemMessageA(dialog, ID_listbox, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        }
        char caption[] = "tab";
        TCITEMA tab{};
        tab.mask = TCIF_TEXT;
        tab.pszText = caption;
        for (WPARAM index = 0; index < 2; ++index)
            SendDlgItemMessageA(dialog, ID_tabs, TCM_INSERTITEMA, index, reinterpret_cast<LPARAM>(&tab));
        return TRUE;
    }
    if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL))
        return FALSE;
    char name[100];
    GetDlgItemTextA(dialog, ID_edit, name, sizeof name);
    const UINT checked = IsDlgButtonChecked(dialog, ID_check);
    const LRESULT combo = SendDlgItemMessageA(dialog, ID_combo, CB_GETCURSEL, 0, 0);
    const LRESULT tab = SendDlgItemMessageA(dialog, ID_tabs, TCM_GETCURSEL, 0, 0);
    EndDialog(dialog, 0);
    Tell(std::string(LOWORD(wParam) == IDOK ? "OK " : "Cancel ") + name + " " + std::to_string(checked) +
         " " + std::to_string(combo) + " " + std::to_string(tab));
    return TRUE;
}

void OnCommand(int id) {
    if (id == ID_ask) {
        const int answer = MessageBoxA(window, "Really?\r\nSure?", "Question", MB_YESNO);
        Tell(answer == IDYES ? "yes" : "no");
    } else if (id == ID_dialog) {
        DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(ID_dialog), window, OnDialogMessage, 0);
    } else if (id == ID_fill) {
        SendMessageA(list, LVM_SETITEMCOUNT, 40, 0);
    }
}

void OnNotification(const NMHDR& header) {
    if (header.idFrom == ID_list)
        OnListNotification(header);
    else if (header.idFrom == ID_tree && header.code == NM_CLICK)
        Tell("clicked the tree");
    else if (header.idFrom == ID_tree && header.code == NM_RCLICK)
        Tell("right-clicked the tree");
}

LRESULT CALLBACK OnMessage(HWND owner, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND && lParam == 0)
        OnCommand(LOWORD(wParam));
    else if (message == WM_COMMAND && reinterpret_cast<HWND>(lParam) == toolbar)
        OnCommand(LOWORD(wParam));
    else if (message == WM_NOTIFY)
        OnNotification(*reinterpret_cast<const NMHDR*>(lParam));
    else if (message == WM_DESTROY)
        PostQuitMessage(42);
    return DefWindowProcA(owner, message, wParam, lParam);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    InitCommonControls();
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = OnMessage;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = "StandIn";
    RegisterClassA(&windowClass);
    window = CreateWindowExA(0, "StandIn", "Stand-in", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 100, 100, 640,
                             360, nullptr, nullptr, instance, nullptr);
    CreateControls();
    ShowWindow(window, SW_SHOW);

    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}
