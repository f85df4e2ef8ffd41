// List views in report form. Rows are counted from 1, columns from 0 in the order in which they are
// displayed.

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/RemoteMemory.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <commctrl.h>
#include <vector>

namespace quarn::uidrive {

namespace {

constexpr std::size_t LongestText = 1024;

class ListView {
  public:
    ListView(Session& session, HWND control)
        : process_(session.Process()),
          control_(control),
          text_(process_, LongestText),
          item_(process_, LVITEMA{}) {}

    int RowCount() const { return static_cast<int>(Send(control_, LVM_GETITEMCOUNT)); }
    HWND Header() const { return reinterpret_cast<HWND>(Send(control_, LVM_GETHEADER)); }
    int ColumnCount() const { return static_cast<int>(Send(Header(), HDM_GETITEMCOUNT)); }

    std::string Cell(int row, int column) { return Text(row, SubItem(column)); }
    std::string Name(int row) { return Text(row, 0); }

    int Image(int row, int column) {
        LVITEMA item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        item.iSubItem = SubItem(column);
        item_.Set(item);
        return Send(control_, LVM_GETITEMA, 0, item_.Parameter()) ? item_.Get().iImage : -1;
    }

    bool Is(int row, UINT state) const {
        return (Send(control_, LVM_GETITEMSTATE, static_cast<WPARAM>(row), state) & state) != 0;
    }

    void SetState(int row, UINT state, UINT mask) {
        LVITEMA item{};
        item.stateMask = mask;
        item.state = state;
        item_.Set(item);
        Send(control_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), item_.Parameter());
    }

    // The caption of a column, with a mark if the list is sorted by it.
    Lines Column(int column) {
        HDITEMA item{};
        item.mask = HDI_TEXT | HDI_FORMAT | HDI_IMAGE;
        item.pszText = static_cast<char*>(text_.Address());
        item.cchTextMax = LongestText;
        RemoteStruct<HDITEMA> remote(process_, item);
        Send(Header(), HDM_GETITEMA, static_cast<WPARAM>(SubItem(column)), remote.Parameter());
        return {Escaped(text_.ReadText()), SortMark(remote.Get())};
    }

    // The part of a row that can be clicked in every view style: the text of its first labelled column.
    POINT PointOn(int row) {
        Send(control_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
        RECT asked{};
        asked.top = SubItem(1);
        asked.left = LVIR_LABEL;
        RemoteStruct<RECT> rect(process_, asked);
        if (!Send(control_, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), rect.Parameter()))
            throw Failure("row " + std::to_string(row + 1) + " has no place on the screen");
        return Centre(rect.Get());
    }

    POINT PointOnHeader(int column) {
        RemoteStruct<RECT> rect(process_, RECT{});
        if (column < 0 || column >= ColumnCount() ||
            !Send(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(SubItem(column)), rect.Parameter()))
            throw Failure("there is no column " + std::to_string(column));
        return Centre(rect.Get());
    }

    // The 0-based row of a word that counts from 1.
    int Row(const std::string& word) const {
        const long row = ToNumber(word);
        if (row < 1 || row > RowCount())
            throw Failure("there is no row " + word);
        return static_cast<int>(row) - 1;
    }

    HWND Window() const { return control_; }

  private:
    std::string Text(int row, int subItem) {
        LVITEMA item{};
        item.iSubItem = subItem;
        item.pszText = static_cast<char*>(text_.Address());
        item.cchTextMax = LongestText;
        item_.Set(item);
        if (Send(control_, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), item_.Parameter()) == 0)
            return "";
        return text_.ReadText();
    }

    // The control's number of a column, which is another one where columns have been moved.
    int SubItem(int column) {
        if (order_.empty()) {
            order_.resize(static_cast<std::size_t>(ColumnCount()));
            const std::size_t bytes = order_.size() * sizeof(int);
            RemoteMemory order(process_, bytes);
            Send(control_, LVM_GETCOLUMNORDERARRAY, order_.size(), order.Parameter());
            order.Read(order_.data(), bytes);
        }
        const std::size_t place = static_cast<std::size_t>(column);
        return place < order_.size() ? order_[place] : column; // a list without a header has no columns
    }

    static std::string SortMark(const HDITEMA& item) {
        if (item.fmt & HDF_IMAGE)
            return "image " + std::to_string(item.iImage);
        if (item.fmt & HDF_SORTUP)
            return "up";
        return (item.fmt & HDF_SORTDOWN) ? "down" : "";
    }

    HANDLE process_;
    HWND control_;
    RemoteMemory text_;
    RemoteStruct<LVITEMA> item_;
    std::vector<int> order_; // read when it is needed
};

Lines Columns(Session& session, const Words& arguments) {
    ListView list(session, session.Control(arguments[0]));
    Lines lines;
    for (int column = 0; column < list.ColumnCount(); ++column)
        lines.push_back(Joined(list.Column(column), "\t"));
    return lines;
}

Lines RowCount(Session& session, const Words& arguments) {
    return {std::to_string(ListView(session, session.Control(arguments[0])).RowCount())};
}

Lines Rows(Session& session, const Words& arguments) {
    ListView list(session, session.Control(arguments[0]));
    const int columns = list.ColumnCount();
    Lines lines;
    for (int row = 0; row < list.RowCount(); ++row) {
        Lines cells;
        for (int column = 0; column < columns; ++column)
            cells.push_back(Escaped(list.Cell(row, column)));
        lines.push_back(Joined(cells, "\t"));
    }
    return lines;
}

Lines Images(Session& session, const Words& arguments) {
    ListView list(session, session.Control(arguments[0]));
    Lines lines;
    for (int row = 0; row < list.RowCount(); ++row)
        lines.push_back(std::to_string(list.Image(row, 0)) + "\t" + std::to_string(list.Image(row, 2)));
    return lines;
}

// What assistive technology calls each row: the text of the control's first column.
Lines RowNames(Session& session, const Words& arguments) {
    ListView list(session, session.Control(arguments[0]));
    Lines lines;
    for (int row = 0; row < list.RowCount(); ++row)
        lines.push_back(Escaped(list.Name(row)));
    return lines;
}

Lines SelectedRows(Session& session, const Words& arguments) {
    ListView list(session, session.Control(arguments[0]));
    Lines numbers;
    for (int row = 0; row < list.RowCount(); ++row) {
        if (list.Is(row, LVIS_SELECTED))
            numbers.push_back(std::to_string(row + 1));
    }
    return {Joined(numbers, " ")};
}

Lines SelectRows(Session& session, const Words& arguments) {
    ListView list(session, session.EnabledControl(arguments[0]));
    constexpr UINT Selection = LVIS_SELECTED | LVIS_FOCUSED;
    for (int row = 0; row < list.RowCount(); ++row) {
        if (list.Is(row, LVIS_SELECTED))
            list.SetState(row, 0, Selection);
    }
    for (std::size_t at = 1; at < arguments.size(); ++at)
        list.SetState(list.Row(arguments[at]), Selection, Selection);
    return {};
}

Lines ClickOnRow(Session& session, const Words& arguments, Click click) {
    ListView list(session, session.EnabledControl(arguments[0]));
    ClickAt(list.Window(), list.PointOn(list.Row(arguments[1])), click);
    return {};
}

Lines ClickRow(Session& session, const Words& arguments) {
    return ClickOnRow(session, arguments, Click::Left);
}
Lines DoubleClickRow(Session& session, const Words& arguments) {
    return ClickOnRow(session, arguments, Click::LeftDouble);
}
Lines RightClickRow(Session& session, const Words& arguments) {
    return ClickOnRow(session, arguments, Click::Right);
}

Lines ClickHeader(Session& session, const Words& arguments) {
    ListView list(session, session.EnabledControl(arguments[0]));
    ClickAt(list.Header(), list.PointOnHeader(static_cast<int>(ToNumber(arguments[1]))), Click::Left);
    return {};
}

} // namespace

Commands ListViewCommands() {
    return {
        {"columns", "LIST", "lists the columns: caption; up, down or an image where sorted by", 1, Columns},
        {"row-count", "LIST", "prints the number of rows", 1, RowCount},
        {"rows", "LIST", "lists the rows, their cells separated by tabs", 1, Rows},
        {"images", "LIST", "lists each row's image numbers of columns 0 and 2", 1, Images},
        {"row-names", "LIST", "lists the rows' names as assistive technology reads them", 1, RowNames},
        {"selected-rows", "LIST", "prints the numbers of the selected rows", 1, SelectedRows},
        {"select-rows", "LIST [ROW...]", "selects these rows and no other, without a click", 1, SelectRows},
        {"click-row", "LIST ROW", "clicks a row", 2, ClickRow},
        {"double-click-row", "LIST ROW", "double-clicks a row", 2, DoubleClickRow},
        {"right-click-row", "LIST ROW", "clicks a row with the right button", 2, RightClickRow},
        {"click-header", "LIST COLUMN", "clicks a column header", 2, ClickHeader},
    };
}

} // namespace quarn::uidrive
