// widgets/tick_list.cpp — the tick list: view, keys, find line, select all, counts.
#include "widgets/tick_list.h"

#include "widgets/column_layout.h"
#include "widgets/list_output.h"
#include "widgets/text_edit.h"
#include "widgets/tick_model.h"
#include "widgets/tick_paint.h"

#include <algorithm>
#include <functional>
#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace orvan {

namespace {

// Tick columns: the mark in the middle, a click anywhere in the cell ticks.
class TickDelegate : public QStyledItemDelegate {
  public:
    TickDelegate(std::function<void(const QModelIndex&)> clicked, QObject* parent)
        : QStyledItemDelegate(parent), clicked_(std::move(clicked)) {}
    bool isReadOnly = false;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QVariant state = index.data(Qt::CheckStateRole);
        if (!state.isValid()) return QStyledItemDelegate::paint(painter, option, index);
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        paintTick(painter, cell, static_cast<Qt::CheckState>(state.toInt()), !isReadOnly);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize usual = QStyledItemDelegate::sizeHint(option, index);
        return {usual.width(), option.fontMetrics.height() * 3 / 2};
    }

  protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override {
        const bool isClick = event->type() == QEvent::MouseButtonRelease &&
                             static_cast<QMouseEvent*>(event)->modifiers() == Qt::NoModifier &&
                             index.data(Qt::CheckStateRole).isValid() && !isReadOnly;
        if (!isClick) return QStyledItemDelegate::editorEvent(event, model, option, index);
        clicked_(index);
        return true;
    }

  private:
    std::function<void(const QModelIndex&)> clicked_;
};

} // namespace

TickList::TickList(const QString& name, std::vector<ListColumn> textColumns,
                   std::vector<TickColumn> tickColumns, Dialogs& dialogs, UserMemory& memory, QWidget* parent)
    : QWidget(parent), dialogs_(dialogs), memory_(memory),
      model_(new TickModel(std::move(textColumns), std::move(tickColumns), this)) {
    setObjectName(name);
    emptyText_ = QStringLiteral("Listede kayıt yok.");
    build();
    columns_->restore();
    updateCounts();
}

TickList::~TickList() = default;

void TickList::build() {
    output_ = new ListOutput(
        this, [this] { return sheet(); }, dialogs_, memory_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    buildToolLine(layout); // before the view: Tab goes in the order they are made
    view_ = new QTreeView(this);
    view_->setObjectName(QStringLiteral("tablo"));
    view_->setAccessibleName(QStringLiteral("İşaretlenecekler"));
    view_->setModel(model_);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setUniformRowHeights(true);
    view_->setAllColumnsShowFocus(false);
    view_->setAlternatingRowColors(true);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->header()->setStretchLastSection(false);
    view_->header()->setSortIndicator(-1, Qt::AscendingOrder);
    view_->installEventFilter(this);
    view_->viewport()->installEventFilter(this);
    auto* delegate = new TickDelegate(
        [this](const QModelIndex& index) {
            const size_t column = static_cast<size_t>(index.column()) - model_->textColumns().size();
            const bool ticked = index.data(Qt::CheckStateRole).toInt() != Qt::Checked;
            model_->tick({model_->node(index)}, column, ticked);
            userTicked();
        },
        this);
    delegate->setObjectName(QStringLiteral("isaretler"));
    view_->setItemDelegate(delegate);
    empty_ = new QLabel(view_->viewport());
    empty_->setObjectName(QStringLiteral("bosListe"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    counts_ = new QLabel(this);
    counts_->setObjectName(QStringLiteral("sayilar"));
    columns_ = std::make_unique<ColumnLayout>(view_->header(), model_->allColumns(), memory_,
                                              QStringLiteral("Isaretler-") + objectName());
    layout->addWidget(view_, 1);
    layout->addWidget(counts_);
    setFocusProxy(find_);
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &TickList::updateCounts);
    connect(view_->header(), &QHeaderView::sortIndicatorChanged, this,
            [this](int column, Qt::SortOrder order) {
                const QString current = currentRow();
                model_->sort(column, order);
                makeCurrent(current);
            });
}

void TickList::buildToolLine(QVBoxLayout* layout) {
    find_ = new QLineEdit(this);
    find_->setObjectName(QStringLiteral("ara"));
    find_->setAccessibleName(QStringLiteral("Listede ara"));
    find_->setPlaceholderText(QStringLiteral("Ad ya da numara"));
    find_->setToolTip(QStringLiteral("Yazdıkça süzülür; birden çok sözcük yazılabilir (Ctrl+F)"));
    find_->setClearButtonEnabled(true);
    find_->installEventFilter(this);
    auto* label = new QLabel(QStringLiteral("&Ara:"), this);
    label->setBuddy(find_);
    auto* line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(find_, 1);
    addAllButton(line, "tumunuIsaretle", QStringLiteral("Tümünü İşaretle"), true);
    addAllButton(line, "tumunuKaldir", QStringLiteral("Tümünü Kaldır"), false);
    line->addWidget(output_->makeButton(this));
    layout->addLayout(line);
    connect(find_, &QLineEdit::textChanged, this, &TickList::setFilter);
    auto* find = new QAction(QStringLiteral("Listede ara"), this);
    find->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_F), QKeySequence(Qt::Key_F3)});
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, this, [this] {
        find_->setFocus(Qt::ShortcutFocusReason);
        find_->selectAll();
    });
    addAction(find);
}

// One tick column: a button; several: a menu of them.
void TickList::addAllButton(QHBoxLayout* line, const char* name, const QString& text, bool ticked) {
    const auto& columns = model_->tickColumns();
    const QString tip = QStringLiteral("Listede görünen satırların tümü için");
    if (columns.size() == 1) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QString::fromLatin1(name));
        button->setToolTip(tip);
        connect(button, &QPushButton::clicked, this,
                [this, ticked] { setAllTicked(model_->tickColumns().front().key, ticked); });
        line->addWidget(button);
        return;
    }
    auto* menu = new QMenu(this);
    for (const TickColumn& column : columns)
        connect(menu->addAction(column.title), &QAction::triggered, this,
                [this, key = column.key, ticked] { setAllTicked(key, ticked); });
    menu->addSeparator();
    connect(menu->addAction(QStringLiteral("&Hepsi")), &QAction::triggered, this, [this, ticked] {
        for (const TickColumn& column : model_->tickColumns())
            setAllTicked(column.key, ticked);
    });
    QToolButton* button = makeMenuButton(name, text, menu, this);
    button->setToolTip(tip);
    line->addWidget(button);
}

void TickList::setTitle(const QString& title) { title_ = title; }

void TickList::setNotes(const QStringList& notes) { notes_ = notes; }

void TickList::setEmptyText(const QString& text) {
    emptyText_ = text;
    updateCounts();
}

void TickList::setReadOnly(bool readOnly) {
    static_cast<TickDelegate*>(view_->itemDelegate())->isReadOnly = readOnly;
    for (const char* name : {"tumunuIsaretle", "tumunuKaldir"})
        findChild<QWidget*>(QString::fromLatin1(name))->setEnabled(!readOnly);
    view_->viewport()->update();
}

void TickList::setRows(std::vector<TickRow> rows) {
    const QString current = currentRow();
    model_->setRows(std::move(rows));
    view_->setRootIsDecorated(model_->isTree());
    view_->header()->setSectionsClickable(!model_->isTree());
    view_->header()->setSortIndicatorShown(!model_->isTree());
    showAllBelow();
    makeCurrent(current);
    ticksChanged();
}

bool TickList::isTicked(const QString& row, const QString& column) const {
    const int node = model_->find(row);
    return node >= 0 && model_->state(node, model_->tickColumn(column)) == Qt::Checked;
}

void TickList::setTicked(const QString& row, const QString& column, bool ticked) {
    const int node = model_->find(row);
    if (node < 0) return;
    model_->tick({node}, model_->tickColumn(column), ticked);
    userTicked();
}

void TickList::setAllTicked(const QString& column, bool ticked) {
    model_->tick(model_->shownNodes(), model_->tickColumn(column), ticked);
    userTicked();
}

QStringList TickList::tickedRows(const QString& column) const {
    const size_t place = model_->tickColumn(column);
    QStringList rows;
    for (int node = 0; node < model_->count(); ++node)
        if (!model_->isParent(node) && model_->row(node).ticks[place]) rows << model_->row(node).key;
    return rows;
}

QStringList TickList::tickedRows() const { return tickedRows(model_->tickColumns().front().key); }

size_t TickList::rowCount() const { return model_->leafCount(); }

bool TickList::isDirty() const { return !model_->changes().empty(); }

std::vector<TickChange> TickList::changes() const { return model_->changes(); }

void TickList::acceptAsLoaded() {
    model_->acceptAsLoaded();
    ticksChanged();
}

void TickList::revert() {
    model_->revert();
    ticksChanged();
}

QString TickList::currentRow() const {
    const QModelIndex index = view_->currentIndex();
    return index.isValid() ? model_->row(model_->node(index)).key : QString();
}

void TickList::makeCurrent(const QString& row) {
    const int node = model_->find(row);
    QModelIndex index =
        node >= 0 ? model_->indexOf(node, std::max(0, view_->currentIndex().column())) : QModelIndex();
    if (!index.isValid()) index = model_->index(0, 0);
    view_->selectionModel()->setCurrentIndex(index,
                                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    view_->scrollTo(index);
}

void TickList::setFilter(const QString& text) {
    if (find_->text() != text) {
        find_->setText(text);
        return;
    }
    const QString current = currentRow();
    model_->setFilter(text);
    showAllBelow();
    makeCurrent(current);
    updateCounts();
}

void TickList::showAllBelow() {
    if (model_->isTree()) view_->expandAll();
}

ListSheet TickList::sheet() const {
    ListSheet sheet;
    sheet.title = title_;
    sheet.notes = notes_;
    std::vector<bool> wanted(static_cast<size_t>(model_->count()));
    for (int node = 0; node < model_->count(); ++node)
        for (size_t column = 0; column < model_->tickColumns().size(); ++column)
            if (model_->state(node, column) != Qt::Unchecked) wanted[static_cast<size_t>(node)] = true;
    const std::vector<ListColumn> all = model_->allColumns();
    const size_t texts = model_->textColumns().size();
    for (const size_t column : columns_->shown())
        sheet.columns.push_back(all[column]);
    for (int node = 0; node < model_->count(); ++node) {
        if (!wanted[static_cast<size_t>(node)]) continue;
        QString indent;
        for (int above = model_->parentOf(node); above >= 0; above = model_->parentOf(above))
            indent += QStringLiteral("    ");
        ListRow line;
        for (const size_t column : columns_->shown()) {
            if (column >= texts) {
                const bool ticked = !model_->isParent(node) && model_->row(node).ticks[column - texts];
                line.push_back(ticked ? QVariant(QStringLiteral("X")) : QVariant());
            } else if (column == 0 && !indent.isEmpty()) {
                line.push_back(indent + cellText(model_->row(node).cells[0], all[0].kind));
            } else {
                line.push_back(model_->row(node).cells[column]);
            }
        }
        sheet.rows.push_back(std::move(line));
    }
    return sheet;
}

std::vector<QAction*> TickList::outputActions() const { return output_->actions(); }

QTreeView* TickList::view() const { return view_; }

QSize TickList::sizeHint() const {
    constexpr int kRows = 18;
    const QSize usual = QWidget::sizeHint();
    const int width = view_->header()->length() + view_->verticalScrollBar()->sizeHint().width() +
                      view_->fontMetrics().averageCharWidth() * 4;
    const int height =
        usual.height() - view_->sizeHint().height() + view_->fontMetrics().height() * kRows * 4 / 3;
    return {std::max(usual.width(), width), std::max(usual.height(), height)};
}

// Space ticks the selected rows; typing goes to the find line, arrows in it come back.
bool TickList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_->viewport() && event->type() == QEvent::Resize)
        empty_->setGeometry(view_->viewport()->rect());
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == find_) {
        if (key->key() == Qt::Key_Escape && !find_->text().isEmpty()) {
            find_->clear();
            return true;
        }
        if (isEnter || key->key() == Qt::Key_Down || key->key() == Qt::Key_PageDown) {
            view_->setFocus(Qt::OtherFocusReason);
            return true;
        }
    } else if (watched == view_) {
        if (key->key() == Qt::Key_Space) {
            if (!key->isAutoRepeat()) toggle();
            return true;
        }
        const bool opens =
            model_->isTree() && (key->text() == u"+" || key->text() == u"-" || key->text() == u"*");
        if ((typesText(*key) && !opens) || (key->key() == Qt::Key_Backspace && !find_->text().isEmpty())) {
            find_->setFocus(Qt::OtherFocusReason);
            find_->end(false);
            QApplication::sendEvent(find_, event);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TickList::hideEvent(QHideEvent* event) {
    columns_->save();
    QWidget::hideEvent(event);
}

// All selected rows become what the current one becomes; in a text column the first tick column is meant.
void TickList::toggle() {
    const QModelIndex current = view_->currentIndex();
    if (!current.isValid() || static_cast<TickDelegate*>(view_->itemDelegate())->isReadOnly) return;
    const size_t texts = model_->textColumns().size();
    const auto column = static_cast<size_t>(current.column()) >= texts ? current.column() - texts : 0;
    const bool ticked = model_->state(model_->node(current), column) != Qt::Checked;
    std::vector<int> nodes{model_->node(current)};
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
        nodes.push_back(model_->node(index));
    model_->tick(nodes, column, ticked);
    userTicked();
}

void TickList::userTicked() {
    ticksChanged();
    emit tickChanged();
}

void TickList::ticksChanged() {
    updateCounts();
    const bool dirty = isDirty();
    if (dirty == wasDirty_) return;
    wasDirty_ = dirty;
    emit dirtyChanged(dirty);
}

void TickList::updateCounts() {
    const size_t all = model_->leafCount(), shown = model_->shownLeafCount();
    QString text = shown == all ? QStringLiteral("%1 satır").arg(all)
                                : QStringLiteral("%1 satırdan gösterilen: %2").arg(all).arg(shown);
    for (const TickColumn& column : model_->tickColumns()) {
        const QString title = model_->tickColumns().size() == 1
                                  ? QStringLiteral("İşaretli")
                                  : QStringLiteral("%1 işaretli").arg(column.title);
        text += QStringLiteral("     %1: %2").arg(title).arg(tickedRows(column.key).size());
    }
    const auto selected = view_->selectionModel()->selectedRows().size();
    if (selected > 1) text += QStringLiteral("     Seçili: %1").arg(selected);
    counts_->setText(text);
    empty_->setVisible(shown == 0);
    empty_->setText(all == 0
                        ? emptyText_
                        : QStringLiteral("\"%1\" aramasına uyan kayıt yok.").arg(find_->text().trimmed()));
    empty_->setGeometry(view_->viewport()->rect());
}

} // namespace orvan
