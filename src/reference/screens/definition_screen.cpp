// reference/screens/definition_screen.cpp — see definition_screen.h.
#include "reference/screens/definition_screen.h"

#include "core/values.h"
#include "reference/definition_list.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/form.h"
#include "widgets/grid.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QScopedValueRollback>
#include <QTableView>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kKey = QStringLiteral("programVeKod");

QString upperFirst(const QString& words) {
    return words.left(1) == QLatin1String("i") ? QStringLiteral("İ") + words.mid(1)
                                               : words.left(1).toUpper() + words.mid(1);
}

DefinitionParts definitionParts(const QString& command, const QString& title, DatabaseSet& databases,
                                Dialogs& dialogs) {
    const DefinitionGroup& group = definitionGroup(command);
    return {std::make_unique<DefinitionList>(databases, dialogs, group, title),
            definitionLayout(group, databases.schema()), QStringLiteral("tanimlar-") + command};
}

} // namespace

DefinitionScreen::DefinitionScreen(const QString& name, const QString& command, const QString& title,
                                   DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                                   QWidget* parent)
    : DefinitionScreen(name, title, definitionParts(command, title, databases, dialogs), databases, dialogs,
                       memory, parent) {}

DefinitionScreen::DefinitionScreen(const QString& name, const QString& title, DefinitionParts parts,
                                   DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                                   QWidget* parent)
    : Screen(name, title, dialogs, parent), databases_(databases), parts_(std::move(parts)),
      list_(*parts_.records), version_(parts_.choosesVersion ? kLastVersion : 0) {
    build(memory);
    attempt(objectName(), [this] {
        reload();
        showRow(rows_.empty() ? nullptr : &rows_[grid_->currentRow().value_or(0)]);
    });
}

void DefinitionScreen::build(UserMemory& memory) {
    std::vector<ListColumn> columns = parts_.layout.columns;
    columns.push_back({kKey, QStringLiteral("Program/Kod"), ListKind::Text, 10, false});
    auto* layout = new QVBoxLayout(this);
    if (parts_.choosesVersion) layout->addLayout(buildVersions());
    grid_ = new ListGrid(parts_.listName, columns, dialogs(), memory, this);
    grid_->setKeyColumn(columns.size() - 1);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setEmptyText(QStringLiteral("Henüz %1 tanımlanmamış. “Yeni” ile ekleyiniz.").arg(list_.one()));
    form_ = new EntryForm(parts_.layout.fields, this);
    heading_ = new QLabel(this);
    heading_->setObjectName(QStringLiteral("tanim"));
    heading_->setTextFormat(Qt::PlainText);
    QFont bold = heading_->font();
    bold.setBold(true);
    heading_->setFont(bold);
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    offerVersions();

    layout->addWidget(grid_, 1);
    layout->addWidget(heading_);
    layout->addWidget(form_);
    layout->addWidget(result_);
    layout->addLayout(buildButtons());
    if (versions_)
        setFocusProxy(versions_);
    else
        setFocusProxy(grid_);

    connect(grid_->view()->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &DefinitionScreen::rowChosen);
    connect(grid_, &ListGrid::activated, this, [this] { form_->focusFirst(); });
    connect(form_, &EntryForm::dirtyChanged, this, [this](bool dirty) { setUnsaved(dirty); });
    connect(form_, &EntryForm::edited, this, [this] { result_->clear(); });
    connect(form_, &EntryForm::lastFieldDone, this, [this] { saveButton_->setFocus(Qt::TabFocusReason); });
}

QHBoxLayout* DefinitionScreen::buildButtons() {
    auto* fresh = makeButton("yeni", QStringLiteral("Y&eni"),
                             QStringLiteral("Yeni bir %1 açar (Ctrl+N)").arg(parts_.recordWord), this,
                             [this] { startNew(); });
    saveButton_ = makeButton("kaydet", QStringLiteral("Kay&det"), QStringLiteral("Kaydeder (Ctrl+S)"), this,
                             [this] { save(); });
    removeButton_ =
        makeButton("sil", QStringLiteral("&Sil"), QStringLiteral("Listede seçili olanı siler (önce sorar)"),
                   this, [this] { removeCurrent(); });
    auto* output = makeButton("yazdir", QStringLiteral("Yazdı&r"),
                              QStringLiteral("Listeyi yazdırır; dosyaya vermek için listenin üstündeki "
                                             "düğmeyi kullanınız"),
                              this, [this] { grid_->outputActions().front()->trigger(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    buttons_ = new QHBoxLayout;
    buttons_->addStretch(1);
    for (QPushButton* button : {fresh, saveButton_, removeButton_, output, leave})
        buttons_->addWidget(button);

    auto* newAction = new QAction(this);
    newAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    newAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    newAction->setAutoRepeat(false);
    connect(newAction, &QAction::triggered, this, &DefinitionScreen::startNew);
    addAction(newAction);
    return buttons_;
}

// Tab goes through the buttons as they stand.
void DefinitionScreen::addButton(QPushButton* button) {
    buttons_->insertWidget(0, button);
    QWidget* before = button;
    for (int i = 1; i < buttons_->count(); ++i)
        if (QWidget* next = buttons_->itemAt(i)->widget()) {
            setTabOrder(before, next);
            before = next;
        }
}

void DefinitionScreen::offerVersions() {
    if (list_.versionField().isEmpty()) return;
    form_->choiceList(list_.versionField())->setChoices(versionChoices());
    for (const auto& [field, choices] : parts_.choices)
        form_->choiceList(field)->setChoices(choices);
}

QHBoxLayout* DefinitionScreen::buildVersions() {
    auto* label = new QLabel(QStringLiteral("Program:"), this);
    versions_ = new ChoiceList(24, this);
    versions_->setObjectName(QStringLiteral("program"));
    versions_->setChoices(versionChoices());
    versions_->setCode(QString::number(version_));
    label->setBuddy(versions_);
    connect(versions_, &ChoiceList::codeChanged, this,
            [this](const QString& code) { chooseVersion(code.toInt()); });
    connect(versions_, &ChoiceList::enterPressed, this, [this] { grid_->setFocus(Qt::TabFocusReason); });
    auto* line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(versions_);
    line->addStretch(1);
    return line;
}

void DefinitionScreen::chooseVersion(int version) {
    if (version == 0 || version == version_ || busy_) return;
    if (!settleUnsaved()) {
        versions_->setCode(QString::number(version_));
        return;
    }
    showVersion(version);
}

void DefinitionScreen::showVersion(int version) {
    attempt(objectName(), [&] {
        version_ = version;
        versions_->setCode(QString::number(version));
        reload();
        showRow(rows_.empty() ? nullptr : &rows_[grid_->currentRow().value_or(0)]);
    });
}

QString DefinitionScreen::keyOf(const FieldTexts& values) const {
    const QString code = values.at(list_.fields().front());
    const auto version = values.find(list_.versionField());
    return version == values.end() ? code : version->second + QLatin1Char('/') + code;
}

ListRow DefinitionScreen::listRow(const StoredRow& row) const {
    ListRow cells;
    for (const ListColumn& column : parts_.layout.columns) {
        const QString text = row.values.at(column.key);
        cells.push_back(column.kind == ListKind::Number && !text.isEmpty() ? QVariant(text.toDouble())
                                                                           : QVariant(text));
    }
    cells.emplace_back(keyOf(row.values));
    return cells;
}

void DefinitionScreen::reload() {
    const QScopedValueRollback busy(busy_, true);
    rows_ = list_.rows();
    if (version_ != 0)
        std::erase_if(rows_, [&](const StoredRow& row) {
            return row.values.at(list_.versionField()).toInt() != version_;
        });
    std::vector<ListRow> cells;
    for (const StoredRow& row : rows_)
        cells.push_back(listRow(row));
    QStringList notes{levelText(databases_.session().level)};
    if (!databases_.session().schoolName.isEmpty()) notes.prepend(databases_.session().schoolName);
    grid_->setNotes(notes);
    grid_->setRows(std::move(cells));
    makeCurrent();
}

// The definition on view is the list's current row, as far as the list shows it.
void DefinitionScreen::makeCurrent() {
    const QScopedValueRollback busy(busy_, true);
    if (row_) grid_->makeCurrent(keyOf(row_->values));
}

void DefinitionScreen::rowChosen() {
    if (busy_) return;
    const auto chosen = grid_->currentRow();
    if (!chosen || (row_ && rows_[*chosen].id == row_->id)) return;
    const jet::RowId wantedRow = rows_[*chosen].id; // saving reads the list again
    if (!settleUnsaved()) {
        QMetaObject::invokeMethod(
            this, [this] { makeCurrent(); }, Qt::QueuedConnection);
        return;
    }
    for (const StoredRow& row : rows_)
        if (row.id == wantedRow) {
            showRow(&row);
            makeCurrent();
            return;
        }
}

void DefinitionScreen::showRow(const StoredRow* row) {
    row_ = row ? std::optional(*row) : std::nullopt;
    shown_.clear();
    form_->clearWrong();
    for (const QString& name : list_.fields()) {
        if (!form_->has(name)) continue;
        form_->setValue(name, row_ ? row_->values.at(name) : QString());
        shown_[name] = form_->value(name);
    }
    heading_->setText(row_ ? list_.nameOf(row_->values) : upperFirst(QStringLiteral("yeni ") + list_.one()));
    removeButton_->setEnabled(row_.has_value());
    result_->clear();
}

void DefinitionScreen::startNew() {
    if (!settleUnsaved()) return;
    attempt(QStringLiteral("Yeni tanım"), [this] {
        showRow(nullptr);
        const QString& code = list_.fields().front();
        form_->setValue(code, list_.nextCode());
        if (version_ != 0) form_->setValue(list_.versionField(), QString::number(version_));
        grid_->view()->clearSelection();
        form_->focusField(code);
    });
}

void DefinitionScreen::discardChanges() { form_->revert(); }

void DefinitionScreen::refresh() {
    if (hasUnsaved()) return;
    attempt(objectName(), [this] {
        reload();
        if (!row_) return;
        for (const StoredRow& row : rows_)
            if (keyOf(row.values) == keyOf(row_->values)) {
                showRow(&row);
                return;
            }
        showRow(rows_.empty() ? nullptr : &rows_[grid_->currentRow().value_or(0)]);
    });
}

// What the person has not touched is not written: a stored text that the form cannot show stays.
FieldTexts DefinitionScreen::wanted() const {
    FieldTexts texts;
    if (row_) texts = row_->values;
    for (const auto& [name, loaded] : shown_)
        if (!row_ || form_->value(name) != loaded) texts[name] = form_->value(name);
    texts.erase(QString::fromLatin1(kGroupField));
    return texts;
}

bool DefinitionScreen::save() {
    // the second click of a double click finds nothing left to save
    if (busy_ || (sinceSaved_.isValid() && sinceSaved_.elapsed() < QApplication::doubleClickInterval() &&
                  !hasUnsaved()))
        return false;
    bool saved = false;
    const QScopedValueRollback busy(busy_, true);
    attempt(QStringLiteral("Tanım kaydı"), [&] { saved = trySave(); });
    return saved;
}

bool DefinitionScreen::trySave() {
    if (!form_->settle()) return false;
    if (row_ && !form_->isDirty()) {
        result_->setText(QStringLiteral("Değişiklik yok."));
        return true;
    }
    const bool isNew = !row_;
    const FieldTexts typed = wanted();
    const SaveOutcome outcome = list_.save(row_, typed);
    if (!outcome.saved) {
        if (form_->has(outcome.field))
            form_->showWrong(outcome.field, outcome.reason);
        else if (!outcome.reason.isEmpty())
            result_->setText(outcome.reason);
        takeOver();
        return false;
    }
    sinceSaved_.start();
    const StoredRow stored = *row_;
    showRow(&stored);
    afterChange((isNew ? QStringLiteral("Eklendi: ") : QStringLiteral("Kaydedildi: ")) +
                list_.nameOf(stored.values));
    return true;
}

// Another station's values stand in the row now: shown where nothing was typed here.
void DefinitionScreen::takeOver() {
    if (!row_) return;
    for (auto& [name, loaded] : shown_) {
        if (form_->value(name) != loaded || row_->values.at(name) == loaded) continue;
        form_->setValue(name, row_->values.at(name));
        loaded = form_->value(name);
    }
}

void DefinitionScreen::afterChange(const QString& words) {
    reload();
    result_->setText(words);
    emit recordsChanged();
}

void DefinitionScreen::removeCurrent() {
    if (!row_ || busy_) return;
    attempt(QStringLiteral("Tanım silme"), [this] {
        const QString name = list_.nameOf(row_->values);
        const size_t place = grid_->currentRow().value_or(0);
        if (!list_.remove(*row_)) return;
        row_.reset();
        form_->acceptAsLoaded(); // what was typed into it is gone with it
        afterChange({});
        showRow(rows_.empty() ? nullptr : &rows_[std::min(place, rows_.size() - 1)]);
        makeCurrent();
        result_->setText(QStringLiteral("Silindi: ") + name);
        grid_->view()->setFocus(Qt::OtherFocusReason);
    });
}

} // namespace orvan
