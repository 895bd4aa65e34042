#include "gui/GridView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPalette>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>

#include "core/Texts.h"
#include "gui/DesignPalette.h"
#include "gui/FormView.h"

namespace kuvo {

namespace {

// A number as the grid shows it, with the regional separator or a point, its
// digits on either side of the separator or both: "12", "12,3", "12,", ",5".
bool IsNumberText(QString text) {
  static const QRegularExpression number(QStringLiteral("^[-+]?(\\d+\\.?\\d*|\\.\\d+)$"));
  text = text.trimmed();
  text.replace(Regional().decimalPoint(), QStringLiteral("."));
  return number.match(text).hasMatch();
}

}  // namespace

void GridModel::Release() {
  beginResetModel();
  grid_ = nullptr;
  rows_ = cols_ = headRows_ = 0;
  endResetModel();
}

bool GridModel::Update() {
  if (!grid_) return false;
  const int rows = grid_->Rows(), cols = grid_->Cols();
  const int headRows = grid_->FixedRows > 0 && rows > 0 ? 1 : 0;
  ReadAlignments();
  if (headRows != headRows_ || cols != cols_ || rows < rows_) {
    beginResetModel();
    rows_ = rows;
    cols_ = cols;
    headRows_ = headRows;
    endResetModel();
    return true;
  }
  if (rows > rows_) {
    beginInsertRows({}, rows_ - headRows_, rows - headRows_ - 1);
    rows_ = rows;
    endInsertRows();
  }
  const int r = rowCount({}), c = columnCount({});
  if (r > 0 && c > 0) emit dataChanged(index(0, 0), index(r - 1, c - 1), {Qt::DisplayRole});
  if (c > 0) emit headerDataChanged(Qt::Horizontal, 0, c - 1);
  return false;
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(0, rows_ - headRows_);
}

int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : cols_; }

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!grid_ || !index.isValid()) return {};
  const int r = index.row() + headRows_, c = index.column();
  // The view may paint between a change of the grid and the next sync.
  if (r >= grid_->Rows() || c >= grid_->Cols()) return {};
  switch (role) {
    case Qt::DisplayRole: return grid_->TextMatrix(r, c);
    case Qt::BackgroundRole:
      if (r < grid_->FixedRows || c < grid_->FixedCols) return DesignPalette().button();
      return {};
    case Qt::TextAlignmentRole: return QVariant::fromValue(Alignment(c, grid_->TextMatrix(r, c)));
    default: return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation o, int role) const {
  if (!grid_ || role != Qt::DisplayRole || o != Qt::Horizontal) return {};
  if (!headRows_ || section >= grid_->Cols() || grid_->Rows() == 0) return {};
  return grid_->TextMatrix(0, section);
}

// The alignment a column's heading asks with < ^ >; otherwise numbers go right
// and texts left.
void GridModel::ReadAlignments() {
  if (grid_->FormatString() == format_) return;
  format_ = grid_->FormatString();
  align_.clear();
  for (const QString& h : format_.split(QLatin1Char('|'))) {
    if (h.startsWith(QLatin1Char('<')))
      align_.push_back(Qt::AlignLeft);
    else if (h.startsWith(QLatin1Char('^')))
      align_.push_back(Qt::AlignHCenter);
    else if (h.startsWith(QLatin1Char('>')))
      align_.push_back(Qt::AlignRight);
    else
      align_.push_back(Qt::Alignment());
  }
}

Qt::Alignment GridModel::Alignment(int col, const QString& text) const {
  Qt::Alignment h = col < static_cast<int>(align_.size()) ? align_[col] : Qt::Alignment();
  if (!h) {
    h = IsNumberText(text) ? Qt::AlignRight : Qt::AlignLeft;
  }
  return h | Qt::AlignVCenter;
}

GridView::GridView(FormView& v, Grid& c)
    : ControlView(v, c), c_(c), w_(new QTableView(&v)), model_(new GridModel(&c)) {
  model_->setParent(w_);
  w_->setModel(model_);
  w_->setSelectionMode(QAbstractItemView::SingleSelection);
  w_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  w_->setCornerButtonEnabled(false);
  w_->setWordWrap(false);
  // Tab goes to the next control, as on the platform's grid, not to the next cell.
  w_->setTabKeyNavigation(false);
  // Whole rows scroll, so that none sits half under the header.
  w_->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  QHeaderView* rows = w_->verticalHeader();
  // At the end of its range the table lines its last row up with the bottom
  // edge, leaving the top row half under the header; the top row stays whole.
  QScrollBar* down = w_->verticalScrollBar();
  QObject::connect(down, &QScrollBar::valueChanged, w_, [this, rows, down](int value) {
    if (value == 0 || value != down->maximum() || rows->sectionViewportPosition(value) == 0) return;
    rows->setOffsetToSectionPosition(value);
    w_->viewport()->update();
  });
  rows->setVisible(false);
  rows->setSectionResizeMode(QHeaderView::Fixed);
  rows->setMinimumSectionSize(8);
  SetRowHeights();
  QHeaderView* cols = w_->horizontalHeader();
  cols->setSectionResizeMode(QHeaderView::Interactive);
  cols->setMinimumSectionSize(0);
  cols->setSectionsClickable(true);
  cols->setHighlightSections(false);
  QObject::connect(w_, &QTableView::clicked, Guard(),
                   [this](const QModelIndex& index) { ClickCell(index); });
  // The heading row is the table's header: a click there is a click on row 0.
  QObject::connect(cols, &QHeaderView::sectionClicked, Guard(), [this](int col) {
    if (model_->HeadRows() > 0) Raise([this, col] { c_.UserClick(0, col); });
  });
  QObject::connect(w_, &QTableView::doubleClicked, Guard(), [this] {
    if (c_.DblClick) Raise([this] { c_.UserDblClick(); });
  });
  Watch(w_);
  Watch(w_->viewport());
}

QWidget* GridView::Widget() const { return w_; }

bool GridView::OnEvent(QObject* watched, QEvent* event) {
  // The arrow keys move the table's own current cell; Space or Enter clicks it.
  if (watched == w_ && event->type() == QEvent::KeyPress) {
    const auto* e = static_cast<QKeyEvent*>(event);
    if (IsPressKey(*e)) {
      const QModelIndex at = w_->currentIndex();
      if (!e->isAutoRepeat() && at.isValid()) ClickCell(at);
      return true;
    }
  }
  return ControlView::OnEvent(watched, event);
}

void GridView::ClickCell(const QModelIndex& index) {
  const int row = index.row() + model_->HeadRows(), col = index.column();
  Raise([this, row, col] {
    // The view's own record of the cell follows before the handler runs;
    // a fixed cell leaves the current cell, so the view goes back to it.
    const bool fixed = row < c_.FixedRows || col < c_.FixedCols;
    row_ = fixed ? -1 : row < c_.Rows() ? row : c_.Row;
    col_ = fixed ? -1 : col < c_.Cols() ? col : c_.Col;
    c_.UserClick(row, col);
  });
}

void GridView::Detach() {
  model_->Release();
  ControlView::Detach();
}

void GridView::SyncOwn() {
  if (view_.Zoom() != zoom_) {
    // Drawn smaller: the widths and the rows follow the window's zoom.
    zoom_ = view_.Zoom();
    widths_.clear();
    revision_ = -1;
    SetRowHeights();
  }
  if (revision_ != c_.Revision()) {
    revision_ = c_.Revision();
    // A reset model forgets the column widths.
    if (model_->Update()) widths_.clear();
    SyncWidths();
  }
  if (row_ != c_.Row || col_ != c_.Col) {
    row_ = c_.Row;
    col_ = c_.Col;
    // The current cell moves without scrolling the grid: a grid being filled
    // keeps showing its first rows, as the platform's grid does.
    QScrollBar* down = w_->verticalScrollBar();
    QScrollBar* across = w_->horizontalScrollBar();
    const int top = down->value(), left = across->value();
    const int r = row_ - model_->HeadRows();
    if (r >= 0 && col_ >= 0 && r < model_->rowCount({}) && col_ < model_->columnCount({}))
      w_->setCurrentIndex(model_->index(r, col_));
    else
      w_->clearSelection();
    down->setValue(top);
    across->setValue(left);
  }
}

// A row is 240 twips high, heading included, as on the platform's grid, so that
// the rows a grid was drawn for fit it at every DPI; never less than its text.
void GridView::SetRowHeights() {
  const int height = std::max(Px(240), w_->fontMetrics().height() + 2);
  w_->verticalHeader()->setDefaultSectionSize(height);
  w_->horizontalHeader()->setFixedHeight(height);
}

void GridView::SyncWidths() {
  const int cols = c_.Cols();
  widths_.resize(static_cast<size_t>(cols), -2);
  QHeaderView* header = w_->horizontalHeader();
  for (int col = 0; col < cols; ++col) {
    const int tw = c_.ColWidth(col);
    if (widths_[static_cast<size_t>(col)] == tw) continue;
    widths_[static_cast<size_t>(col)] = tw;
    header->resizeSection(col, tw >= 0 ? Px(tw) : header->defaultSectionSize());
  }
  header->setVisible(model_->HeadRows() > 0);
}

}  // namespace kuvo
