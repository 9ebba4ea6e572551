// reference/screens/frm_meslek_ders_havuzu_build.cpp — how the window of a profession's courses is put
// together.
#include "reference/screens/frm_meslek_ders_havuzu.h"

#include "reference/definition_groups.h"
#include "reference/screens/definition_layouts.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/edit_model.h"
#include "widgets/grid.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvan {

using namespace curriculum_field;

namespace {

constexpr int kGridShare = 2, kPoolShare = 1; // of the width
constexpr int kShareUnit = 1000;              // Qt scales the shares to the room there is

EditColumn number(const QString& key, const QString& title, int width, double least, double most) {
    EditColumn column{key, title, CellKind::Number, width};
    column.limits = {least, most, 0};
    return column;
}

EditColumn readOnly(const QString& key, const QString& title, int width, ListKind shownAs) {
    EditColumn column{key, title, CellKind::ReadOnly, width};
    column.shownAs = shownAs;
    return column;
}

std::vector<EditColumn> gridColumns() {
    return {readOnly(kOrder, QStringLiteral("Sıra"), 4, ListKind::Number),
            number(kYear, QStringLiteral("Yıl"), 4, 1, 9),
            number(kTerm, QStringLiteral("Dönem"), 6, 0, 9),
            readOnly(kCourse, QStringLiteral("Kod"), 8, ListKind::Text),
            readOnly(QStringLiteral("DersAdi"), QStringLiteral("Ders adı"), 30, ListKind::Text),
            number(kHours, QStringLiteral("Haftalık"), 8, 0, 99),
            number(kTotalHours, QStringLiteral("Toplam"), 7, 0, 9999),
            number(kPassMark, QStringLiteral("Geçme"), 6, 0, 100),
            {kPractical, QStringLiteral("Uygulama"), CellKind::Check, 9},
            {kTurkish, QStringLiteral("Türkçe"), CellKind::Check, 7},
            {kExempt, QStringLiteral("Bitirmede muaf"), CellKind::Check, 14}};
}

} // namespace

void FrmMeslekDersHavuzu::build(UserMemory& memory) {
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buildChoices());
    grid_ = new EditGrid(QStringLiteral("meslekDersleri"), gridColumns(), dialogs(), memory, this);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setEmptyText(QStringLiteral("Bu seçimde ders yok.\nDersi sağdaki havuzdan ekleyiniz veya hazır "
                                       "dersleri yükleyiniz."));
    QHeaderView* numbers = grid_->view()->verticalHeader();
    numbers->setSectionsMovable(true);
    numbers->setToolTip(QStringLiteral("Satırı numarasından sürükleyerek sırasını değiştirebilirsiniz "
                                       "(Alt+Yukarı, Alt+Aşağı)"));
    connect(numbers, &QHeaderView::sectionMoved, this, [this, numbers](int, int from, int to) {
        if (busy_) return;
        busy_ = true;
        numbers->moveSection(to, from); // the rows themselves change places
        busy_ = false;
        const auto* model = qobject_cast<const EditModel*>(grid_->view()->model());
        const auto rowAt = [&](int place) { return model->place(model->index(place, 0)).row; };
        const size_t first = rowAt(from), second = rowAt(to);
        QMetaObject::invokeMethod(
            this, [this, first, second] { move(first, second); }, Qt::QueuedConnection);
    });
    auto* halves = new QSplitter(Qt::Horizontal, this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(grid_);
    halves->addWidget(buildPool(memory));
    halves->setStretchFactor(0, kGridShare);
    halves->setStretchFactor(1, kPoolShare);
    halves->setSizes({kGridShare * kShareUnit, kPoolShare * kShareUnit});
    layout->addWidget(halves, 1);
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    layout->addWidget(result_);
    layout->addLayout(buildButtons());
    addMoveKeys();
    setFocusProxy(profession_);
    connect(grid_, &EditGrid::dirtyChanged, this, [this](bool dirty) { setUnsaved(dirty); });
    connect(grid_, &EditGrid::edited, this, [this] { result_->clear(); });
    connect(grid_, &EditGrid::lastCellDone, this, [this] { saveButton_->setFocus(Qt::TabFocusReason); });
    connect(poolGrid_, &ListGrid::activated, this, [this] { addCourses(); });
}

ChoiceList* FrmMeslekDersHavuzu::addChoice(QGridLayout* layout, int row, int column, const QString& text,
                                           const char* name, int width) {
    auto* label = new QLabel(text, this);
    auto* list = new ChoiceList(width, this);
    list->setObjectName(QString::fromLatin1(name));
    label->setBuddy(list);
    layout->addWidget(label, row, column);
    layout->addWidget(list, row, column + 1);
    return list;
}

QLayout* FrmMeslekDersHavuzu::buildChoices() {
    auto* layout = new QGridLayout;
    profession_ = addChoice(layout, 0, 0, QStringLiteral("&Meslek:"), "meslek", 28);
    version_ = addChoice(layout, 0, 2, QStringLiteral("Program:"), "program", 20);
    level_ = addChoice(layout, 1, 0, QStringLiteral("Düzey:"), "duzey", 12);
    track_ = addChoice(layout, 1, 2, QStringLiteral("Öğre&nim:"), "ogrenim", 20);
    year_ = addChoice(layout, 1, 4, QStringLiteral("Yıl:"), "yil", 12);
    layout->setColumnStretch(6, 1);
    version_->setChoices(versionChoices());
    std::vector<Choice> levels;
    for (const QString& text : curriculumLevels())
        levels.push_back({text, text});
    level_->setChoices(std::move(levels));
    for (ChoiceList* list : {profession_, version_, level_, track_, year_}) {
        connect(list, &ChoiceList::codeChanged, this,
                [this, list](const QString& code) { chosen(list, code); });
        connect(list, &ChoiceList::enterPressed, this, [this] { grid_->setFocus(Qt::TabFocusReason); });
    }
    return layout;
}

QWidget* FrmMeslekDersHavuzu::buildPool(UserMemory& memory) {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    poolGrid_ =
        new ListGrid(QStringLiteral("programinHavuzu"),
                     {{QStringLiteral("DersKodu"), QStringLiteral("Kod"), ListKind::Text, 8},
                      {QStringLiteral("DersAdi"), QStringLiteral("Havuzdaki ders"), ListKind::Text, 26},
                      {QStringLiteral("DersHaftalikSaat"), QStringLiteral("Saat"), ListKind::Number, 5},
                      {QStringLiteral("DersTuru"), QStringLiteral("Tür"), ListKind::Text, 4}},
                     dialogs(), memory, side);
    for (QToolButton* tool : poolGrid_->findChildren<QToolButton*>())
        tool->hide(); // the narrow side has room for the search alone; the pool prints in its own window
    for (QLabel* label : poolGrid_->findChildren<QLabel*>())
        if (label->buddy()) label->setText(QStringLiteral("Havuz:")); // the Alt letter is the other grid's
    poolGrid_->setTitle(QStringLiteral("Ders Havuzu"));
    poolGrid_->setEmptyText(QStringLiteral("Bu programın havuzunda ders yok."));
    layout->addWidget(poolGrid_, 1);
    layout->addWidget(makeButton("ekle", QStringLiteral("&Ekle"),
                                 QStringLiteral("Havuzda seçili dersleri mesleğe ekler (listede Enter)"),
                                 this, [this] { addCourses(); }));
    return side;
}

QLayout* FrmMeslekDersHavuzu::buildButtons() {
    const auto button = [this](const char* name, const char* text, const char* tip, auto pressed) {
        return makeButton(name, QString::fromUtf8(text), QString::fromUtf8(tip), this, pressed);
    };
    auto* rows = new QHBoxLayout;
    rows->addWidget(
        button("yukari", "Y&ukarı", "Satırı bir yukarı alır (Alt+Yukarı)", [this] { moveCurrent(-1); }));
    rows->addWidget(
        button("asagi", "Aşağı", "Satırı bir aşağı alır (Alt+Aşağı)", [this] { moveCurrent(1); }));
    rows->addWidget(button("bitirme", "Bitirme Dersleri…",
                           "Mesleğin her dersi için bir bitirme dersi oluşturur (önce sorar)",
                           [this] { makeFinalExam(); }));
    rows->addWidget(button("hazir", "&Hazır Dersler…", "Mesleğin hazır derslerini yükler (önce sorar)",
                           [this] { loadReady(); }));
    rows->addWidget(button("meslekler", "Meslekler…", "Bu programın meslek tanımlarını açar", [this] {
        emit openRequested(QString::fromLatin1(kProfessionsOfVersionKey), version_->code());
    }));
    rows->addStretch(1);
    auto* record = new QHBoxLayout;
    record->addStretch(1);
    saveButton_ =
        button("kaydet", "Kay&det", "Tablodaki değişiklikleri kaydeder (Ctrl+S)", [this] { save(); });
    record->addWidget(saveButton_);
    record->addWidget(
        button("sil", "&Sil", "Tabloda üzerinde durulan satırı siler (önce sorar)", [this] { removeRow(); }));
    record->addWidget(button("yazdir", "Yazdı&r", "Tablodaki dersleri yazdırır",
                             [this] { grid_->outputActions().front()->trigger(); }));
    record->addWidget(button("kapat", "Kapa&t", "Pencereyi kapatır (Esc)", [this] { closeWindow(); }));
    auto* both = new QVBoxLayout;
    both->addLayout(rows);
    both->addLayout(record);
    return both;
}

void FrmMeslekDersHavuzu::addMoveKeys() {
    const auto add = [this](Qt::Key key, int by) {
        auto* action = new QAction(this);
        action->setShortcut(QKeySequence(Qt::ALT | key));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, [this, by] { moveCurrent(by); });
        addAction(action);
    };
    add(Qt::Key_Up, -1);
    add(Qt::Key_Down, 1);
}

} // namespace orvan
