// reference/screens/record_screen.cpp — see record_screen.h.
#include "reference/screens/record_screen.h"

#include "core/turkish_text.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/grid.h"

#include <algorithm>
#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QTableView>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orvan {

namespace {

QLabel* makeLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QVariant cell(const ListColumn& column, const StoredRow& row) {
    const QString text = row.values.at(column.key);
    return column.kind == ListKind::Number && !text.isEmpty() ? QVariant(text.toDouble()) : QVariant(text);
}

constexpr int kListShare = 420, kRecordShare = 560; // of the width, until the user has moved the border

QString upperFirst(const QString& words) { return upperTurkish(words.left(1)) + words.mid(1); }

} // namespace

RecordScreen::RecordScreen(const QString& name, const QString& title, Dialogs& dialogs, UserMemory& memory,
                           QWidget* parent)
    : Screen(name, title, dialogs, parent), memory_(memory) {}

// Widgets are made in the order in which Tab goes through them.
void RecordScreen::build(RecordParts parts) {
    parts_ = std::move(parts);
    if (parts_.name.isEmpty()) parts_.name = parts_.columns.front().key;
    for (const FormPage& page : parts_.pages)
        for (const FormField& field : page.fields)
            fields_ << field.name;
    layout_ = new QVBoxLayout(this);
    auto* section = new QWidget(this);
    auto* sectionLayout = new QVBoxLayout(section);
    if (parts_.section.isEmpty()) {
        sectionLayout->setContentsMargins(0, 0, 0, 0);
        layout_->addWidget(section, 1);
    } else {
        sections_ = new QTabWidget(this);
        sections_->setObjectName(QStringLiteral("bolumler"));
        sections_->addTab(section, parts_.section);
        layout_->addWidget(sections_, 1);
    }
    if (parts_.header) sectionLayout->addWidget(parts_.header(section));
    splitter_ = new QSplitter(section);
    splitter_->setObjectName(QStringLiteral("bolme"));
    splitter_->setChildrenCollapsible(false);
    sectionLayout->addWidget(splitter_, 1);
    buildList();
    buildRecord();
    splitter_->setStretchFactor(0, 2);
    splitter_->setStretchFactor(1, 3);
    splitter_->setSizes({kListShare, kRecordShare});
    splitter_->restoreState(memory_.value(QStringLiteral("Bolme-") + objectName()).toByteArray());
}

void RecordScreen::buildList() {
    grid_ = new ListGrid(parts_.listName, parts_.columns, dialogs(), memory_, splitter_);
    grid_->setKeyColumn(0);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setNotes(parts_.notes);
    grid_->setEmptyText(QStringLiteral("Henüz %1 kaydedilmemiş. “Yeni” ile ekleyiniz.").arg(parts_.one));
    connect(grid_->view()->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &RecordScreen::rowChosen);
    connect(grid_, &ListGrid::activated, this, [this] { pages_->focusFirst(); });
}

void RecordScreen::buildRecord() {
    auto* record = new QWidget(splitter_);
    heading_ = makeLabel("kayit", record);
    QFont bold = heading_->font();
    bold.setBold(true);
    heading_->setFont(bold);
    pages_ = new FormPages(objectName() + QStringLiteral("-sayfalar"), parts_.pages, memory_, record);
    auto* layout = new QVBoxLayout(record);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(heading_);
    layout->addWidget(pages_, 1);
    connect(pages_, &FormPages::dirtyChanged, this, &RecordScreen::checkUnsaved);
    connect(pages_, &FormPages::edited, this, [this] { result_->clear(); });
    connect(pages_, &FormPages::lastFieldDone, this, [this] { saveButton_->setFocus(Qt::TabFocusReason); });
}

QHBoxLayout* RecordScreen::buildButtons() {
    auto* fresh = makeButton("yeni", QStringLiteral("Y&eni"), QStringLiteral("Yeni bir kayıt açar (Ctrl+N)"),
                             this, [this] { startNew({}); });
    saveButton_ = makeButton("kaydet", QStringLiteral("Kay&det"), QStringLiteral("Kaydı saklar (Ctrl+S)"),
                             this, [this] { save(); });
    removeButton_ =
        makeButton("sil", QStringLiteral("&Sil"), QStringLiteral("Görünen kaydı siler (önce sorar)"), this,
                   [this] { removeCurrent(); });
    auto* output =
        makeButton("yazdir", QStringLiteral("Yazdı&r"),
                   QStringLiteral("Görünen listeyi yazdırır; dosyaya vermek için listenin üstündeki düğmeyi "
                                  "kullanınız"),
                   this, [this] { printShown(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : ownButtons_)
        buttons->addWidget(button);
    buttons->addStretch(1);
    for (QPushButton* button : {fresh, saveButton_, removeButton_, output, leave})
        buttons->addWidget(button);
    auto* newAction = new QAction(this);
    newAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    newAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    newAction->setAutoRepeat(false);
    connect(newAction, &QAction::triggered, this, [this] { startNew({}); });
    addAction(newAction);
    return buttons;
}

void RecordScreen::addSection(const QString& title, QWidget* page) {
    auto* holder = new QWidget(sections_);
    auto* layout = new QVBoxLayout(holder);
    layout->addWidget(page);
    holder->setFocusProxy(page);
    sections_->addTab(holder, title);
}

void RecordScreen::addBelow(QWidget* widget) {
    pages_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* layout = static_cast<QVBoxLayout*>(pages_->parentWidget()->layout());
    layout->addWidget(widget, 1);
}

void RecordScreen::showRecordSection() {
    if (sections_) sections_->setCurrentIndex(0);
}

void RecordScreen::printShown() {
    for (ListGrid* list : findChildren<ListGrid*>())
        if (list->isVisible()) {
            list->outputActions().front()->trigger();
            return;
        }
}

void RecordScreen::load() {
    if (!result_) {
        result_ = makeLabel("sonuc", this);
        layout_->addWidget(result_);
        layout_->addLayout(buildButtons());
        // the tabs come last in the round of Tab: it begins where the window has its focus at first
        if (sections_) setTabOrder(findChild<QPushButton*>(QStringLiteral("kapat")), sections_->tabBar());
        setFocusProxy(first_ ? first_ : grid_);
    }
    attempt(objectName(), [this] {
        reload();
        showRow(rows_.empty() ? nullptr : &rows_[grid_->currentRow().value_or(0)]);
        makeCurrent();
    });
}

void RecordScreen::loadOther() {
    row_.reset();
    load();
}

QString RecordScreen::nameOf(const StoredRow& row) const { return row.values.at(parts_.name); }
QString RecordScreen::keyOf(const StoredRow& row) const { return row.values.at(parts_.columns.front().key); }

// Its place in the file may hold another record by now.
const StoredRow* RecordScreen::sameRow() const {
    const StoredRow* found = nullptr;
    for (const StoredRow& row : rows_) {
        if (row.id == row_->id && nameOf(row) == nameOf(*row_)) return &row;
        if (keyOf(row) == keyOf(*row_)) found = &row;
    }
    return found;
}

void RecordScreen::reload() {
    const QScopedValueRollback busy(busy_, true);
    rows_ = readRows();
    std::vector<ListRow> cells;
    for (const StoredRow& row : rows_) {
        ListRow line;
        for (const ListColumn& column : parts_.columns)
            line.push_back(cell(column, row));
        cells.push_back(std::move(line));
    }
    grid_->setRows(std::move(cells));
    listRead();
    makeCurrent();
}

// The record on view is the list's current row, as far as the list shows it.
void RecordScreen::makeCurrent() {
    const QScopedValueRollback busy(busy_, true);
    if (row_) grid_->makeCurrent(cell(parts_.columns.front(), *row_));
}

void RecordScreen::rowChosen() {
    if (busy_) return;
    const auto chosen = grid_->currentRow();
    if (!chosen || (row_ && rows_[*chosen].id == row_->id)) return;
    const jet::RowId wantedRow = rows_[*chosen].id; // saving reads the list again
    if (!settleUnsaved()) {
        QMetaObject::invokeMethod(
            this, [this] { makeCurrent(); }, Qt::QueuedConnection);
        return;
    }
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const StoredRow& row) { return row.id == wantedRow; });
    if (found == rows_.end()) return;
    attempt(objectName(), [&] { showRow(&*found); });
    makeCurrent();
}

void RecordScreen::showRow(const StoredRow* row) {
    row_ = row ? std::optional(*row) : std::nullopt;
    shown_.clear();
    pages_->clearWrong();
    for (const QString& field : fields_) {
        pages_->setValue(field, row_ ? row_->values.at(field) : QString());
        shown_[field] = pages_->value(field);
    }
    showMore(row_ ? &*row_ : nullptr);
    heading_->setText(row_ ? nameOf(*row_) : upperFirst(QStringLiteral("yeni ") + parts_.one));
    removeButton_->setEnabled(row_.has_value());
    result_->clear();
    checkUnsaved();
}

void RecordScreen::showRecord(const QString& name) {
    attempt(objectName(), [&] {
        reload();
        for (const StoredRow& row : rows_)
            if (sameTurkish(nameOf(row), name.trimmed())) {
                grid_->setFilter({});
                showRow(&row);
                makeCurrent();
                return;
            }
        say(QStringLiteral("“%1” listede yok.").arg(name));
    });
}

void RecordScreen::startNew(const QString& name) {
    if (!settleUnsaved()) return;
    showRecordSection();
    attempt(QStringLiteral("Yeni kayıt"), [&] {
        showRow(nullptr);
        const QScopedValueRollback busy(busy_, true);
        grid_->view()->clearSelection();
        grid_->view()->setCurrentIndex({});
        pages_->setValue(parts_.name, name);
        shown_[parts_.name].clear();
        pages_->focusField(parts_.name);
    });
}

void RecordScreen::checkUnsaved() { setUnsaved(pages_->isDirty() || moreIsDirty()); }
void RecordScreen::say(const QString& words) { result_->setText(words); }

void RecordScreen::discardChanges() {
    pages_->revert();
    revertMore();
    checkUnsaved();
}

void RecordScreen::refresh() {
    if (hasUnsaved()) return;
    attempt(objectName(), [this] {
        reload();
        if (!row_) return;
        const StoredRow* same = sameRow();
        showRow(same ? same : rows_.empty() ? nullptr : &rows_[grid_->currentRow().value_or(0)]);
        makeCurrent();
    });
}

// What the person has not touched is not written: a stored text that the form cannot show stays.
FieldTexts RecordScreen::wanted() const {
    FieldTexts texts;
    for (const QString& field : fields_) {
        const QString now = pages_->value(field);
        const bool touched = !row_ || now != shown_.at(field);
        texts[field] = touched ? now : row_->values.at(field);
    }
    addToSave(texts);
    return texts;
}

bool RecordScreen::save() { return save(false); }
bool RecordScreen::saveOnLeaving() { return save(true); }

bool RecordScreen::save(bool asked) {
    // the second click of a double click finds nothing left to save
    const bool justSaved =
        sinceSaved_.isValid() && sinceSaved_.elapsed() < QApplication::doubleClickInterval();
    if (busy_ || (justSaved && !hasUnsaved())) return false;
    bool saved = false;
    const QScopedValueRollback busy(busy_, true);
    attempt(QStringLiteral("Kayıt"), [&] { saved = trySave(asked); });
    return saved;
}

bool RecordScreen::trySave(bool asked) {
    if (!pages_->settle() || !settleMore()) return false;
    if (row_ && !pages_->isDirty() && !moreIsDirty()) {
        say(QStringLiteral("Değişiklik yok."));
        return true;
    }
    const bool isNew = !row_;
    const SaveOutcome outcome = saveRow(row_, wanted(), asked);
    if (!outcome.saved) {
        showRefused(outcome);
        takeOver();
        return false;
    }
    sinceSaved_.start();
    const StoredRow stored = *row_;
    showRow(&stored);
    QStringList words{(isNew ? QStringLiteral("Eklendi: ") : QStringLiteral("Kaydedildi: ")) +
                      nameOf(stored)};
    words << wordsAfterSave(stored.values);
    words.removeAll(QString());
    afterChange(words.join(QLatin1Char('\n')));
    return true;
}

void RecordScreen::showRefused(const SaveOutcome& outcome) {
    showRecordSection();
    if (fields_.contains(outcome.field))
        pages_->showWrong(outcome.field, outcome.reason);
    else if (!showWrongMore(outcome.field, outcome.reason) && !outcome.reason.isEmpty())
        say(outcome.reason);
}

// Another station's values stand in the row now: shown where nothing was typed here.
void RecordScreen::takeOver() {
    if (!row_) return;
    for (auto& [field, loaded] : shown_) {
        if (pages_->value(field) != loaded || row_->values.at(field) == loaded) continue;
        pages_->setValue(field, row_->values.at(field));
        loaded = pages_->value(field);
    }
    takeOverMore(*row_);
}

void RecordScreen::afterChange(const QString& words) {
    reload();
    say(words);
    emit recordsChanged();
}

void RecordScreen::showAgain(jet::RowId wanted) {
    reload();
    for (const StoredRow& row : rows_)
        if (row.id == wanted) {
            showRow(&row);
            makeCurrent();
            return;
        }
}

void RecordScreen::removeCurrent() {
    if (!row_ || busy_) return;
    attempt(QStringLiteral("Kayıt silme"), [this] {
        const QString name = nameOf(*row_);
        const size_t place = grid_->currentRow().value_or(0);
        if (!removeRow(*row_)) return;
        row_.reset();
        discardChanges(); // what was typed into it is gone with it
        afterChange({});
        showRow(rows_.empty() ? nullptr : &rows_[std::min(place, rows_.size() - 1)]);
        makeCurrent();
        say(QStringLiteral("Silindi: ") + name);
        grid_->view()->setFocus(Qt::OtherFocusReason);
    });
}

void RecordScreen::hideEvent(QHideEvent* event) {
    memory_.setValue(QStringLiteral("Bolme-") + objectName(), splitter_->saveState());
    Screen::hideEvent(event);
}

} // namespace orvan
