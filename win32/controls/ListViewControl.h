#pragma once

// Shows a ListView in a virtual list: the control holds no texts and asks for each cell it paints. Selection
// and focus live in both; what the user changes goes to the model at once, what the program changes goes to
// the control at the next flush.
//
// A row's name is for everyone who reads the control, screen readers above all, the text of its first column.
// So the column that names the row is the control's first one, and is displayed at its place in the model.
//
// Columns that fill share what the others leave of the list's width, until the user changes a width.

#include "controls/ListView.h"
#include "win32/Dpi.h"
#include "win32/Images.h"
#include "win32/ToolTips.h"
#include "win32/controls/Control.h"

#include <functional>
#include <string>
#include <vector>

namespace quarn {

class ListViewControl final : public Control {
  public:
    enum class Selection { OneRow, SeveralRows };

    // The column with this number, from 1, names the rows. Typing finds a row whose text in it starts with
    // the typed letters.
    ListViewControl(ListView& model, std::int32_t nameColumn) noexcept
        : model_(model), nameColumn_(nameColumn) {}

    void Create(HWND parent, int id, const char* name, Selection selection, Dpi dpi);

    // The images of rows, cells and headers. A row's image is in the middle of the first column. A cell's
    // image follows its text, which has two letters: the code of a country.
    enum class Pictures { OfHeaders, OfRowsAndHeaders };
    void SetImages(const Images& images, Pictures pictures);

    // Scales the columns' widths.
    void ChangeDpi(Dpi dpi);

    void Flush();

    void SelectAll() noexcept;

    // Position of a menu that the keyboard opened: at the focused row, or in the list's corner.
    POINT MenuPosition() const noexcept;

    Answer OnNotify(NMHDR& notification) override;

    // The user's actions; each is optional.
    std::function<void()> Clicked;                   // the left button, on a row or not
    std::function<void()> MouseReleased;             // either button; before Clicked
    std::function<void(std::int32_t)> KeyReleased;   // the virtual key code
    std::function<void(std::int32_t)> ColumnClicked; // from 1
    std::function<void()> Activated;                 // double click or Enter on a row
    std::function<void()> RightPressed;              // the row under the mouse is selected

  private:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnRightPress(LPARAM position);
    void OnHeaderChanged(const NMHEADERA& change);
    void OnItemChanged(const NMLISTVIEW& change);
    void FillIn(LVITEMA& item) const;
    int OnFind(const NMLVFINDITEMA& search) const;
    int OnFind(const NMLVFINDITEMW& search) const;
    int FindRow(const std::string& sought, int start) const;
    bool IsShown(std::int32_t row, std::int32_t column) const noexcept;
    int ImageOf(const std::string& key) const noexcept;

    // Between the model's columns, from 1, and the control's, from 0.
    int SubItemOf(std::int32_t column) const noexcept;
    std::int32_t ColumnOf(int subItem) const noexcept;

    // Painting (ListViewControlPainting.cpp)
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& stage) const;
    void MarkSelection(NMLVCUSTOMDRAW& stage, std::int32_t row) const;
    void FillSpaceBeforeName(HDC canvas, std::int32_t row) const;
    int CellPicture(std::int32_t row, std::int32_t column) const;
    void PaintCellPicture(HDC canvas, std::int32_t row, std::int32_t column) const;
    void PaintEmptyText(HDC canvas) const;

    int WidthOf(std::int32_t column) const noexcept; // in pixels, as below
    void SetWidth(std::int32_t column, int width) noexcept;
    void FitColumns();
    bool FitsColumns() const noexcept;
    void ShowCutCell(LPARAM position);
    RECT CellBounds(std::int32_t row, int subItem) const noexcept;
    void FlushEmptyText();

    void FlushHeaders();
    void ShowHeader(std::int32_t column);
    void ShowRowCount();
    void ShowSelection();
    void ShowSelectionRowByRow();
    void ShowFocus();
    void InvalidateRows(std::int32_t first, std::int32_t last) const noexcept;
    void SetRowState(std::int32_t row, UINT state, UINT mask) const noexcept;
    HWND Header() const noexcept;

    ListView& model_;
    std::int32_t nameColumn_;
    Dpi dpi_ = Dpi(96);
    const Images* images_ = nullptr;
    Images rowHeight_; // as required by the images that are painted
    bool paintsCellPictures_ = false;
    std::vector<std::string> shownHeaderIcons_;
    static constexpr UINT_PTR CellToolTip = 1; // the number of its area
    ToolTips toolTips_;
    std::string toolTip_; // of the cell under the mouse, where it is cut
    RECT toolTipCell_{};
    std::string shownEmptyText_;
    std::int32_t shownRows_ = 0;

    // The row selected by the last flush if it was the only one and nothing changed since; otherwise 0.
    std::int32_t soleSelectedRow_ = 0;
    bool flushing_ = false;
    bool settingWidths_ = false; // the program does, not the user
};

} // namespace quarn
