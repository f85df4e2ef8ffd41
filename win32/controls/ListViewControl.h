#pragma once

// Shows a ListView in a virtual list: the control holds no texts and asks for each cell it paints. Selection
// and focus live in both; what the user changes goes to the model at once, what the program changes goes to
// the control at the next flush.

#include "controls/ListView.h"
#include "win32/Dpi.h"
#include "win32/Images.h"
#include "win32/controls/Control.h"

#include <functional>
#include <string>
#include <vector>

namespace quarn {

class ListViewControl final : public Control {
  public:
    enum class Selection { OneRow, SeveralRows };

    // Typing a text searches the column of this number, from 1, for a row that starts with it.
    ListViewControl(ListView& model, std::int32_t searchColumn) noexcept
        : model_(model), searchColumn_(searchColumn) {}

    void Create(HWND parent, int id, const char* name, Selection selection, Dpi dpi);

    // The pictures of rows, cells and headers. Without pictures of rows the list keeps no room for them. A
    // cell's picture stands behind its text, which has two letters: the code of a country.
    enum class Pictures { OfHeaders, OfRowsAndHeaders };
    void SetImages(const Images& images, Pictures pictures);

    // Keeps the columns' widths in inches.
    void ChangeDpi(Dpi dpi);

    void Flush();

    void SelectAll() noexcept;

    // Where a menu that the keyboard asked for belongs: at the focused row, or in the list's corner.
    POINT MenuPosition() const noexcept;

    Answer OnNotify(NMHDR& notification) override;

    // The user's actions; each is optional.
    std::function<void()> Clicked;                   // the left button, over a row or not
    std::function<void()> MouseReleased;             // either button; before Clicked
    std::function<void(std::int32_t)> KeyReleased;   // the virtual key code
    std::function<void(std::int32_t)> ColumnClicked; // from 1
    std::function<void()> Activated;                 // double click or Enter on a row
    std::function<void()> RightPressed;              // the row under the mouse is selected

  private:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnRightPress(LPARAM position);
    void OnItemChanged(const NMLISTVIEW& change);
    void FillIn(LVITEMA& item) const;
    int OnFind(const NMLVFINDITEMA& search) const;
    int OnFind(const NMLVFINDITEMW& search) const;
    int FindRow(const std::string& sought, int start) const;
    bool IsShown(std::int32_t row, int subItem) const noexcept;
    int ImageOf(const std::string& key) const noexcept;

    LRESULT OnCustomDraw(const NMLVCUSTOMDRAW& stage) const;
    int CellPicture(std::int32_t row, int subItem) const;
    void PaintCellPicture(HDC canvas, std::int32_t row, int subItem) const;

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
    std::int32_t searchColumn_;
    Dpi dpi_ = Dpi(96);
    const Images* images_ = nullptr;
    bool paintsCellPictures_ = false;
    std::vector<std::string> shownHeaderIcons_;
    std::int32_t shownRows_ = 0;

    // The one row that the last flush selected; 0 when the user or a flush selected otherwise since.
    std::int32_t soleSelectedRow_ = 0;
    bool flushing_ = false;
};

} // namespace quarn
