#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "gui/ControlView.h"

class QTableView;

namespace kuvo {

// The grid's cells as a table model: one model whatever the number of rows,
// and no widget per cell. Fixed row 0 becomes the table's header, so that it
// stays in place when the rows scroll; fixed columns are cells with the colour
// of a header.
class GridModel : public QAbstractTableModel {
 public:
  explicit GridModel(const Grid* grid) : grid_(grid) {}
  // The control is going: the model empties and reads it no more.
  void Release();
  // Rows of the grid shown in the header (0 or 1).
  int HeadRows() const { return headRows_; }

  // Takes in the grid's changes: rows added at the end are inserted, any other
  // change of shape resets the model (and returns true).
  bool Update();

  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation o, int role) const override;

 private:
  void ReadAlignments();
  Qt::Alignment Alignment(int col, const QString& text) const;

  const Grid* grid_;
  int rows_ = 0, cols_ = 0, headRows_ = 0;
  QString format_;
  std::vector<Qt::Alignment> align_;
};

// A grid: its model in a table view. A click on a cell goes through the
// control's UserClick; the view follows Row and Col and the column widths.
// From the keyboard, the arrow keys move the table's current cell and Space or
// Enter clicks it.
class GridView : public ControlView {
 public:
  GridView(FormView& v, Grid& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }
  bool OnEvent(QObject* watched, QEvent* event) override;
  void Detach() override;

 protected:
  void SyncOwn() override;

 private:
  // A click on a cell of the table, by the mouse or the keyboard.
  void ClickCell(const QModelIndex& index);
  void SyncWidths();
  void SetRowHeights();

  Grid& c_;
  QTableView* w_;
  GridModel* model_;
  int revision_ = -1;
  int row_ = -1, col_ = -1;
  std::vector<int> widths_;
  double zoom_ = 1;
};

}  // namespace kuvo
