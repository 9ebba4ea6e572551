// widgets/edit_grid_body.cpp — building the entry grid, and what it shows beside the cells.
#include "widgets/edit_grid_body.h"

#include "core/turkish_text.h"

#include <algorithm>
#include <QAction>
#include <QActionGroup>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kListedRefusals = 500;
constexpr int kRefusalLines = 5;

const QColor kWrongColor(0xB0, 0x10, 0x10);
const QString kDown = QStringLiteral("asagi"), kRight = QStringLiteral("saga");

std::vector<ListColumn> listColumns(const std::vector<EditColumn>& columns) {
    std::vector<ListColumn> list;
    for (const EditColumn& column : columns)
        list.push_back({column.key, column.title, listKind(column), column.width});
    return list;
}

} // namespace

EditGridBody::EditGridBody(EditGrid& grid, std::vector<EditColumn> columns, Dialogs& dialogs,
                           UserMemory& memory)
    : grid_(grid), dialogs_(dialogs), memory_(memory), model_(new EditModel(std::move(columns), this)) {
    emptyText_ = QStringLiteral("Tabloda satır yok.");
}

void EditGridBody::build() {
    buildView();
    columns_ =
        std::make_unique<ColumnLayout>(view_->horizontalHeader(), listColumns(model_->cells().columns()),
                                       memory_, QStringLiteral("Tablo-") + grid_.objectName());
    output_ = new ListOutput(
        &grid_, [this] { return grid_.sheet(); }, dialogs_, memory_);
    auto* layout = new QVBoxLayout(&grid_);
    layout->setContentsMargins(0, 0, 0, 0);
    buildToolLine(layout);
    layout->addWidget(view_, 1);
    auto* foot = new QHBoxLayout;
    counts_ = new QLabel(&grid_);
    counts_->setObjectName(QStringLiteral("sayilar"));
    reason_ = new QLabel(&grid_);
    reason_->setObjectName(QStringLiteral("neden"));
    reason_->setTextFormat(Qt::PlainText);
    reason_->setWordWrap(true);
    QPalette palette = reason_->palette();
    palette.setColor(QPalette::WindowText, kWrongColor);
    reason_->setPalette(palette);
    foot->addWidget(counts_);
    foot->addSpacing(grid_.fontMetrics().averageCharWidth() * 3);
    foot->addWidget(reason_, 1);
    layout->addLayout(foot);
    buildRefusals(layout);
    grid_.setFocusProxy(view_);
    restoreLayout();
    updateCounts();
}

void EditGridBody::buildView() {
    view_ = new PinnedTableView(&grid_);
    view_->setObjectName(QStringLiteral("tablo"));
    view_->setAccessibleName(QStringLiteral("Giriş tablosu"));
    view_->setModel(model_);
    EditDelegate::Host host;
    host.column = [this](const QModelIndex& index) -> const EditColumn& {
        return model_->cells().columns()[static_cast<size_t>(index.column())];
    };
    host.value = [this](const QModelIndex& index) { return model_->cells().value(model_->place(index)); };
    host.commit = [this](const QModelIndex& index, const QString& typed) { commit(index, typed); };
    host.leave = [this](Qt::Key key) { leaveEditor(key); };
    delegate_ = new EditDelegate(std::move(host), this);
    view_->setItemDelegate(delegate_);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setWordWrap(false);
    view_->setTabKeyNavigation(false);
    view_->setCornerButtonEnabled(false);
    view_->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() * 8 / 5);
    QHeaderView* header = view_->horizontalHeader();
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->setSortIndicatorShown(true);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->installEventFilter(&grid_);
    view_->viewport()->installEventFilter(&grid_);
    empty_ = new QLabel(view_->viewport());
    empty_->setObjectName(QStringLiteral("bosListe"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);

    connect(view_, &QTableView::doubleClicked, this, [this] { openEditor(false, nullptr); });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { updateCounts(); });
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& now, const QModelIndex& before) {
                updateReason();
                if (now.isValid() && now.row() != before.row())
                    emit grid_.currentRowChanged(model_->place(now).row);
            });
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder order) {
        delegate_->finish();
        const auto at = grid_.currentCell();
        model_->sort(column, order);
        if (at) makeCurrent(*at);
    });
    connect(header, &QHeaderView::customContextMenuRequested, this, [this](QPoint place) {
        QMenu menu(&grid_);
        columns_->fillMenu(&menu);
        menu.exec(view_->horizontalHeader()->mapToGlobal(place));
    });
    connect(view_, &QTableView::customContextMenuRequested, this, &EditGridBody::showContextMenu);
    const auto add = [this](const char* name, const QString& text, QList<QKeySequence> keys, auto run) {
        auto* action = new QAction(text, view_);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, run);
        view_->addAction(action);
    };
    add("kes", QStringLiteral("K&es"), {QKeySequence(Qt::CTRL | Qt::Key_X)}, [this] { cut(); });
    add("kopyala", QStringLiteral("&Kopyala"), {QKeySequence(Qt::CTRL | Qt::Key_C)}, [this] { copy(); });
    add("yapistir", QStringLiteral("&Yapıştır"), {QKeySequence(Qt::CTRL | Qt::Key_V)}, [this] { paste(); });
    add("geriAl", QStringLiteral("&Geri al"), {QKeySequence(Qt::CTRL | Qt::Key_Z)},
        [this] { undo(&EditCells::undo); });
    add("yinele", QStringLiteral("Y&inele"),
        {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)},
        [this] { undo(&EditCells::redo); });
}

void EditGridBody::buildToolLine(QVBoxLayout* layout) {
    find_ = new QLineEdit(&grid_);
    find_->setObjectName(QStringLiteral("ara"));
    find_->setAccessibleName(QStringLiteral("Satır ara"));
    find_->setPlaceholderText(QStringLiteral("Numara ya da ad"));
    find_->setToolTip(QStringLiteral("Yazdıkça satıra gider, Enter sonrakini bulur (Ctrl+F)"));
    find_->setClearButtonEnabled(true);
    find_->installEventFilter(&grid_);
    findLabel_ = new QLabel(QStringLiteral("&Ara:"), &grid_);
    findLabel_->setBuddy(find_);

    auto* columnMenu = new QMenu(&grid_);
    connect(columnMenu, &QMenu::aboutToShow, this, [this, columnMenu] { columns_->fillMenu(columnMenu); });
    auto* directionMenu = new QMenu(&grid_);
    auto* directions = new QActionGroup(directionMenu);
    const auto direction = [&](const QString& text, EntryDirection where) {
        QAction* action = directionMenu->addAction(text);
        action->setCheckable(true);
        directions->addAction(action);
        connect(action, &QAction::triggered, this, [this, where] {
            directionChosen_ = true;
            chooseDirection(where);
        });
        return action;
    };
    down_ = direction(QStringLiteral("&Aşağıdaki hücreye geç"), EntryDirection::Down);
    right_ = direction(QStringLiteral("&Sağdaki hücreye geç"), EntryDirection::Right);
    directionButton_ = makeMenuButton("girisYonu", QString(), directionMenu, &grid_);
    directionButton_->setToolTip(QStringLiteral("Enter tuşunun hangi hücreye geçeceği"));

    auto* top = toolLine_ = new QHBoxLayout;
    top->addWidget(findLabel_);
    top->addWidget(find_, 1);
    top->addWidget(directionButton_);
    top->addWidget(makeMenuButton("sutunlar", QStringLiteral("Sütunlar"), columnMenu, &grid_));
    QToolButton* output = output_->makeButton(&grid_);
    top->addWidget(output);
    layout->addLayout(top);
    QWidget::setTabOrder(output, view_); // the line stands above the table

    connect(find_, &QLineEdit::textEdited, this, [this] { findRow(false); });
    auto* find = new QAction(QStringLiteral("Satır ara"), &grid_);
    find->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_F), QKeySequence(Qt::Key_F3)});
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, this, [this] {
        if (find_->isHidden()) return;
        find_->setFocus(Qt::ShortcutFocusReason);
        find_->selectAll();
    });
    grid_.addAction(find);
}

void EditGridBody::buildRefusals(QVBoxLayout* layout) {
    refusalsTitle_ = new QLabel(&grid_);
    refusals_ = new QListWidget(&grid_);
    refusals_->setObjectName(QStringLiteral("alinmayanlar"));
    refusals_->setAccessibleName(QStringLiteral("Alınmayan hücreler"));
    refusals_->setToolTip(QStringLiteral("Enter ya da çift tıklama hücreye gider"));
    refusals_->setMaximumHeight(refusals_->fontMetrics().lineSpacing() * (kRefusalLines + 1));
    refusals_->installEventFilter(&grid_);
    refusalsTitle_->setBuddy(refusals_);
    layout->addWidget(refusalsTitle_);
    layout->addWidget(refusals_);
    refusalsTitle_->hide();
    refusals_->hide();
    connect(refusals_, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        const QPoint place = item->data(Qt::UserRole).toPoint();
        if (place.x() < 0 || static_cast<size_t>(place.y()) >= model_->cells().rowCount()) return;
        makeCurrent({static_cast<size_t>(place.y()), static_cast<size_t>(place.x())});
        view_->setFocus(Qt::OtherFocusReason);
    });
}

void EditGridBody::restoreLayout() {
    columns_->restore();
    const QString stored =
        memory_.value(QStringLiteral("Tablo-") + grid_.objectName() + QStringLiteral("/GirisYonu"))
            .toString();
    directionChosen_ = stored == kDown || stored == kRight;
    chooseDirection(stored == kRight ? EntryDirection::Right : EntryDirection::Down);
}

void EditGridBody::saveLayout() {
    columns_->save();
    if (directionChosen_)
        memory_.setValue(QStringLiteral("Tablo-") + grid_.objectName() + QStringLiteral("/GirisYonu"),
                         direction_ == EntryDirection::Down ? kDown : kRight);
}

void EditGridBody::chooseDirection(EntryDirection direction) {
    direction_ = direction;
    const bool down = direction == EntryDirection::Down;
    (down ? down_ : right_)->setChecked(true);
    directionButton_->setText((down ? QStringLiteral("Enter: aşağı") : QStringLiteral("Enter: sağa")) +
                              QStringLiteral("  "));
}

void EditGridBody::showContextMenu(QPoint place) {
    QMenu menu(&grid_);
    for (QAction* action : view_->actions())
        menu.addAction(action);
    menu.addAction(QStringLiteral("&Tümünü seç\tCtrl+A"), view_, &QTableView::selectAll);
    menu.addSeparator();
    for (QAction* action : output_->actions())
        menu.addAction(action);
    menu.exec(view_->viewport()->mapToGlobal(place));
}

void EditGridBody::cellsChanged(const std::vector<CellPlace>& places) {
    updateCounts();
    updateRefusals();
    updateReason();
    for (const CellPlace place : places)
        if (!model_->cells().refusal(place))
            emit grid_.edited(place.row, model_->cells().columns()[place.column].key);
    const bool dirty = grid_.isDirty();
    if (dirty == wasDirty_) return;
    wasDirty_ = dirty;
    emit grid_.dirtyChanged(dirty);
}

void EditGridBody::updateCounts() {
    const EditCells& cells = model_->cells();
    QString text =
        QStringLiteral("%1 satır     Değişen hücre: %2").arg(cells.rowCount()).arg(cells.changedCount());
    if (!cells.refusals().empty()) text += QStringLiteral("     Alınmayan: %1").arg(cells.refusals().size());
    int selected = 0;
    for (const QItemSelectionRange& range : view_->selectionModel()->selection())
        selected += range.width() * range.height();
    if (selected > 1) text += QStringLiteral("     Seçili hücre: %1").arg(selected);
    counts_->setText(text);
    empty_->setVisible(cells.rowCount() == 0);
    empty_->setText(emptyText_);
    empty_->setGeometry(view_->viewport()->rect());
}

void EditGridBody::updateRefusals() {
    const auto& refused = model_->cells().refusals();
    refusals_->clear();
    int listed = 0;
    for (const auto& [place, refusal] : refused) {
        if (++listed > kListedRefusals) break;
        auto* item = new QListWidgetItem(
            QStringLiteral("%1: \"%2\" — %3").arg(nameOf(place), refusal.typed, refusal.reason), refusals_);
        item->setData(Qt::UserRole, QPoint(static_cast<int>(place.column), static_cast<int>(place.row)));
    }
    for (const QString& words : placesOutside_)
        (new QListWidgetItem(words, refusals_))->setData(Qt::UserRole, QPoint(-1, -1));
    QString title = QStringLiteral("Alınmayan hücreler: %1").arg(refused.size());
    if (refused.size() > kListedRefusals) title += QStringLiteral(" (ilk %1 tanesi)").arg(kListedRefusals);
    refusalsTitle_->setText(title);
    const bool any = refusals_->count() > 0;
    if (!any && refusals_->hasFocus()) view_->setFocus();
    refusalsTitle_->setVisible(any);
    refusals_->setVisible(any);
}

void EditGridBody::updateReason() {
    const QModelIndex current = view_->currentIndex();
    const EditCells::Refusal* refused =
        current.isValid() ? model_->cells().refusal(model_->place(current)) : nullptr;
    reason_->setText(refused ? QStringLiteral("⚠ ") + refused->reason : QString());
}

// From the current row on, and round; the row itself counts while typing, not for "next".
void EditGridBody::findRow(bool next) {
    const QStringList words = lowerTurkish(find_->text()).split(u' ', Qt::SkipEmptyParts);
    const int rows = model_->rowCount();
    const QModelIndex current = view_->currentIndex();
    reason_->clear();
    if (words.isEmpty() || rows == 0) return;
    const std::vector<int> columns = shownColumns();
    const int start = (current.isValid() ? current.row() : 0) + (next ? 1 : 0);
    for (int step = 0; step < rows; ++step) {
        const int row = (start + step) % rows;
        QString text;
        for (const int column : columns)
            text += model_->index(row, column).data().toString() + u'\n';
        text = lowerTurkish(text);
        if (!std::all_of(words.begin(), words.end(),
                         [&](const QString& word) { return text.contains(word); }))
            continue;
        goTo(model_->index(row, current.isValid() ? current.column() : columns.front()));
        return;
    }
    reason_->setText(QStringLiteral("\"%1\" bulunamadı.").arg(find_->text().trimmed()));
}

QString EditGridBody::nameOf(CellPlace place) const {
    const EditCells& cells = model_->cells();
    const auto first = static_cast<size_t>(shownColumns().front());
    const QString who = shownCell(cells.columns()[first], cells.value({place.row, first}));
    const QString& column = cells.columns()[place.column].title;
    const int row = model_->indexOf(place).row() + 1;
    if (first == place.column || who.isEmpty()) return QStringLiteral("%1. satır, %2").arg(row).arg(column);
    return QStringLiteral("%1. satır (%2), %3").arg(row).arg(who, column);
}

// Whatever keys are held just now: one cell is current and selected.
void EditGridBody::goTo(const QModelIndex& index) {
    view_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    view_->scrollTo(index);
}

void EditGridBody::makeCurrent(CellPlace place) { goTo(model_->indexOf(place)); }

QModelIndexList EditGridBody::selectedCells() const {
    QModelIndexList cells;
    for (const QModelIndex& index : view_->selectionModel()->selectedIndexes())
        if (!view_->isColumnHidden(index.column())) cells << index;
    if (cells.isEmpty() && view_->currentIndex().isValid()) cells << view_->currentIndex();
    return cells;
}

std::vector<int> EditGridBody::shownColumns() const {
    std::vector<int> columns;
    for (const size_t column : columns_->shown())
        columns.push_back(static_cast<int>(column));
    return columns;
}

} // namespace orvan
