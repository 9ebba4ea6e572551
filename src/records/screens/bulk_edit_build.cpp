// records/screens/bulk_edit_build.cpp — how the window of a bulk edit is put together.
#include "records/screens/bulk_edit_screen.h"
#include "records/screens/student_choice_form.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"
#include "widgets/grid.h"
#include "widgets/tick_list.h"

#include <algorithm>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kWidest = 30; // characters of a column or field

FieldKind fieldKind(BulkEditor editor) {
    switch (editor) {
    case BulkEditor::Code: return FieldKind::Code;
    case BulkEditor::Date: return FieldKind::Date;
    case BulkEditor::Choice:
    case BulkEditor::YesNo: return FieldKind::Choice;
    case BulkEditor::Text: break;
    }
    return FieldKind::Text;
}

CellKind cellKind(BulkEditor editor) {
    switch (editor) {
    case BulkEditor::Code: return CellKind::Code;
    case BulkEditor::Date: return CellKind::Date;
    case BulkEditor::Choice: return CellKind::Choice;
    case BulkEditor::YesNo: return CellKind::Check;
    case BulkEditor::Text: break;
    }
    return CellKind::Text;
}

std::vector<Choice> offered(const std::vector<FormChoice>& choices) {
    std::vector<Choice> list;
    for (const FormChoice& choice : choices)
        list.push_back({choice.code, choice.text});
    return list;
}

EditColumn shownOnly(const char* key, const QString& title, int width) {
    EditColumn column{QString::fromLatin1(key), title, CellKind::ReadOnly, width};
    return column;
}

} // namespace

void BulkEditScreen::build(UserMemory& memory) {
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("sayfalar"));
    auto* students = new QWidget(tabs_);
    students->setObjectName(QStringLiteral("ogrenciSayfasi"));
    auto* page = new QVBoxLayout(students);
    choice_ = new StudentChoiceForm(students);
    page->addWidget(choice_);
    eachOwn() ? buildGrid(page, memory) : buildTicks(page, memory);
    lines_ = new ListGrid(QStringLiteral("degisiklikler"),
                          {{QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
                           {QStringLiteral("adSoyad"), QStringLiteral("Adı Soyadı"), ListKind::Text, 22},
                           {QStringLiteral("bilgi"), QStringLiteral("Bilgi"), ListKind::Text, 16},
                           {QStringLiteral("eski"), QStringLiteral("Eski"), ListKind::Text, 16},
                           {QStringLiteral("yeni"), QStringLiteral("Yeni"), ListKind::Text, 16},
                           {QStringLiteral("durum"), QStringLiteral("Durum"), ListKind::Text, 46}},
                          dialogs(), memory, tabs_);
    lines_->setEmptyText(QStringLiteral("Değişecekleri görmek için “Ön İzle” düğmesine basınız."));
    tabs_->addTab(students, QStringLiteral("Öğrenciler"));
    tabs_->addTab(lines_, QStringLiteral("Ön İzleme"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_, 1);
    layout->addLayout(buildButtons());
    setFocusProxy(choice_);
    connect(choice_, &StudentChoiceForm::chosen, this, &BulkEditScreen::selectionChanged);
}

void BulkEditScreen::buildTicks(QBoxLayout* layout, UserMemory& memory) {
    ticks_ = new TickList(QStringLiteral("topluOgrenciler"),
                          {{QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
                           {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 16},
                           {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 16},
                           {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 8},
                           {QStringLiteral("donem"), QStringLiteral("Dönem"), ListKind::Text, 9},
                           {QStringLiteral("deger"), QStringLiteral("Şimdiki Değer"), ListKind::Text, 26}},
                          {{QStringLiteral("secili"), QStringLiteral("Seçili")}}, dialogs(), memory,
                          layout->parentWidget());
    ticks_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    ticks_->setEmptyText(QStringLiteral("Bu seçime uyan öğrenci yok."));
    layout->addWidget(ticks_, 1);
    layout->addLayout(buildValueLine());
    connect(choice_, &EntryForm::lastFieldDone, ticks_, [this] { ticks_->setFocus(Qt::TabFocusReason); });
}

std::vector<Choice> BulkEditScreen::valuesOf(const BulkField& field) {
    if (field.editor == BulkEditor::YesNo)
        return {{QStringLiteral("1"), QStringLiteral("Evet")},
                {QStringLiteral("0"), QStringLiteral("Hayır")}};
    std::vector<Choice> choices = offered(edit_.choices(field));
    if (!field.derive) choices.push_back({kEmptyChoice, QStringLiteral("(boş bırak)")});
    return choices;
}

// The field, where there are several, and the editor of the chosen one.
QBoxLayout* BulkEditScreen::buildValueLine() {
    auto* line = new QVBoxLayout; // side by side they are too wide for a small screen
    line->setSpacing(0);
    const auto& fields = edit_.command().fields;
    if (fields.size() > 1) {
        const FormField about[] = {
            {QStringLiteral("alan"), QStringLiteral("&Hangi bilgi:"), FieldKind::Choice, 0, 24}};
        fieldForm_ = new EntryForm(about, ticks_->parentWidget());
        std::vector<Choice> choices;
        for (const BulkField& field : fields)
            choices.push_back({QString::fromLatin1(field.name), edit_.label(field)});
        fieldForm_->choiceList(about[0].name)->setChoices(std::move(choices));
        fieldForm_->setValue(about[0].name, QString::fromLatin1(fields.front().name));
        line->addWidget(fieldForm_);
    }
    values_ = new QStackedWidget(ticks_->parentWidget());
    for (const BulkField& field : fields) {
        const QString name = QString::fromLatin1(field.name);
        const int width = edit_.width(field);
        const FormField about[] = {{name, QStringLiteral("Yeni değe&r:"), fieldKind(field.editor), width,
                                    width == 0 ? kWidest : std::clamp(width + 1, 8, kWidest)}};
        auto* form = new EntryForm(about, values_);
        if (ChoiceList* list = form->choiceList(name)) list->setChoices(valuesOf(field));
        auto* edit = qobject_cast<QLineEdit*>(form->editor(name));
        if (edit && field.editor == BulkEditor::Text) {
            auto* completer = new QCompleter(edit_.inUse(field), edit);
            completer->setFilterMode(Qt::MatchContains);
            edit->setCompleter(completer);
        }
        values_->addWidget(form);
    }
    line->addWidget(values_, 1);
    if (fieldForm_)
        connect(fieldForm_, &EntryForm::edited, this, [this] {
            const BulkField* field = edit_.command().field(fieldForm_->value(QStringLiteral("alan")));
            if (!field) return;
            values_->setCurrentIndex(static_cast<int>(field - edit_.command().fields.data()));
            attempt(objectName(), [this] { showTicks(); });
        });
    return line;
}

void BulkEditScreen::buildGrid(QBoxLayout* layout, UserMemory& memory) {
    std::vector<EditColumn> columns{shownOnly("numara", QStringLiteral("Kütük No"), 11),
                                    shownOnly("adi", QStringLiteral("Adı"), 14),
                                    shownOnly("soyadi", QStringLiteral("Soyadı"), 14)};
    if (!edit_.command().field(QStringLiteral("Ogr_Sinif")))
        columns.push_back(shownOnly("sinif", QStringLiteral("Sınıf"), 7));
    columns.push_back(shownOnly("donem", QStringLiteral("Dönem"), 8));
    for (const BulkField& field : edit_.command().fields) {
        EditColumn column;
        column.key = QString::fromLatin1(field.name);
        column.title = edit_.label(field);
        column.kind = cellKind(field.editor);
        column.maxLength = edit_.width(field);
        column.width = std::clamp(column.maxLength, 10, 22);
        column.choices = offered(edit_.choices(field));
        columns.push_back(std::move(column));
    }
    grid_ = new EditGrid(QStringLiteral("hucreler-") + QLatin1String(edit_.command().key), std::move(columns),
                         dialogs(), memory, layout->parentWidget());
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setEmptyText(QStringLiteral("Bu seçime uyan öğrenci yok."));
    grid_->setPinnedColumns(3);
    grid_->setEntryDirection(EntryDirection::Down);
    for (const BulkField& field : edit_.command().fields) {
        if (!field.refusal) continue;
        const QString name = QString::fromLatin1(field.name);
        grid_->setValidator(name, [this, &field, name](CellPlace place, const QString& value) {
            FieldTexts student = students_[place.row].values;
            for (const BulkField& other : edit_.command().fields)
                student[QString::fromLatin1(other.name)] =
                    grid_->value(place.row, QString::fromLatin1(other.name));
            student[name] = value;
            const QString refusal = field.refusal(student, clock_.today());
            return refusal.isEmpty() ? CellCheck::take(value) : CellCheck::refuse(refusal);
        });
    }
    layout->addWidget(grid_, 1);
    connect(grid_, &EditGrid::dirtyChanged, this, [this](bool dirty) { setUnsaved(dirty); });
    connect(choice_, &EntryForm::lastFieldDone, grid_, [this] { grid_->setFocus(Qt::TabFocusReason); });
}

QBoxLayout* BulkEditScreen::buildButtons() {
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    auto* look = makeButton("onizle", QStringLiteral("Ö&n İzle"),
                            QStringLiteral("Neyin değişeceğini, eski ve yeni değeriyle gösterir"), this,
                            [this] { preview(); });
    auto* write = eachOwn() ? makeButton("kaydet", QStringLiteral("Kay&det"),
                                         QStringLiteral("Değişen hücreleri kaydeder (önce sorar, Ctrl+S)"),
                                         this, [this] { save(); })
                            : makeButton("uygula", QStringLiteral("&Uygula"),
                                         QStringLiteral("Değeri işaretli öğrencilere yazar (önce sorar)"),
                                         this, [this] { apply(); });
    auto* again = makeButton("yenile", QStringLiteral("Y&enile"),
                             QStringLiteral("Öğrencileri yeniden okur (F5)"), this, [this] {
                                 if (settleUnsaved()) refresh();
                             });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(result_, 1);
    for (QPushButton* button : {look, write, again, leave})
        buttons->addWidget(button);
    return buttons;
}

} // namespace orvan
