// widgets/form_pages.cpp — tabs of forms that behave as one.
#include "widgets/form_pages.h"

#include <algorithm>
#include <cassert>
#include <QAction>
#include <QApplication>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orvan {

namespace {

// Pages higher than the window scroll; the field with the focus is always in view.
class PageScroll : public QScrollArea {
  public:
    explicit PageScroll(EntryForm* form) {
        setWidget(form);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            if (now && isAncestorOf(now)) ensureWidgetVisible(now);
        });
    }
    QSize sizeHint() const override { return widget()->sizeHint() + QSize(2, 2); }
};

QString pageKey(const QWidget* pages) { return QStringLiteral("Sayfa-") + pages->objectName(); }

} // namespace

FormPages::FormPages(const QString& name, std::vector<FormPage> pages, UserMemory& memory, QWidget* parent)
    : QWidget(parent), memory_(memory), tabs_(new QTabWidget(this)) {
    setObjectName(name);
    tabs_->setObjectName(QStringLiteral("sayfalar"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs_);
    for (const FormPage& page : pages)
        addForm(page);
    const auto turnBy = [this](const QList<QKeySequence>& keys, int step) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, [this, step] { turn(step); });
        addAction(action);
    };
    turnBy({QKeySequence(Qt::CTRL | Qt::Key_PageDown), QKeySequence(Qt::CTRL | Qt::Key_Tab)}, 1);
    turnBy({QKeySequence(Qt::CTRL | Qt::Key_PageUp), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab)}, -1);
    connect(tabs_, &QTabWidget::currentChanged, this, [this] { emit pageShown(page()); });
    showPage(memory_.value(pageKey(this)).toString());
}

void FormPages::addForm(const FormPage& page) {
    auto* form = new EntryForm(page.fields);
    forms_.push_back(form);
    auto* scroll = new PageScroll(form);
    scroll->setObjectName(page.name);
    tabs_->addTab(scroll, page.title);
    form->setRevert([this] { revert(); });
    connect(form, &EntryForm::edited, this, &FormPages::edited);
    connect(form, &EntryForm::dirtyChanged, this, &FormPages::checkDirty);
    connect(form, &EntryForm::lastFieldDone, this, [this, form] { goOnAfter(form); });
}

void FormPages::addPage(const QString& name, const QString& title, QWidget* page) {
    auto* holder = new QWidget;
    holder->setObjectName(name);
    auto* layout = new QVBoxLayout(holder);
    layout->addWidget(page);
    holder->setFocusProxy(page);
    tabs_->addTab(holder, title);
    if (memory_.value(pageKey(this)).toString() == name) showPage(name);
}

QString FormPages::value(const QString& field) const { return formOf(field)->value(field); }

void FormPages::setValue(const QString& field, const QString& value) {
    formOf(field)->setValue(field, value);
}

void FormPages::enterValue(const QString& field, const QString& value) {
    formOf(field)->enterValue(field, value);
}

ChoiceList* FormPages::choiceList(const QString& field) const { return formOf(field)->choiceList(field); }

QWidget* FormPages::editor(const QString& field) const { return formOf(field)->editor(field); }

void FormPages::setReadOnly(const QString& field, bool readOnly) {
    formOf(field)->setReadOnly(field, readOnly);
}

void FormPages::setAllReadOnly(bool readOnly) {
    for (EntryForm* form : forms_)
        form->setAllReadOnly(readOnly);
}

bool FormPages::settle() {
    for (EntryForm* form : forms_) {
        if (form->settle()) continue;
        focusField(form->wrongField());
        return false;
    }
    return true;
}

bool FormPages::isDirty() const {
    return std::any_of(forms_.begin(), forms_.end(), [](const EntryForm* form) { return form->isDirty(); });
}

void FormPages::acceptAsLoaded() {
    for (EntryForm* form : forms_)
        form->acceptAsLoaded();
}

void FormPages::revert() {
    for (EntryForm* form : forms_)
        form->revert();
}

void FormPages::focusField(const QString& field) {
    EntryForm* form = formOf(field);
    for (int i = 0; i < tabs_->count(); ++i) {
        const auto* scroll = qobject_cast<QScrollArea*>(tabs_->widget(i));
        if (scroll && scroll->widget() == form) tabs_->setCurrentIndex(i);
    }
    form->focusField(field);
}

void FormPages::focusFirst() {
    if (EntryForm* shown = form(page()))
        shown->focusFirst();
    else
        tabs_->currentWidget()->setFocus();
}

void FormPages::showWrong(const QString& field, const QString& reason) {
    clearWrong();
    formOf(field)->showWrong(field, reason);
    focusField(field);
}

void FormPages::clearWrong() {
    for (EntryForm* form : forms_)
        form->clearWrong();
}

EntryForm* FormPages::form(const QString& page) const {
    for (EntryForm* form : forms_)
        if (form->parentWidget()->parentWidget()->objectName() == page) return form;
    return nullptr;
}

QString FormPages::page() const {
    return tabs_->currentWidget() ? tabs_->currentWidget()->objectName() : QString();
}

void FormPages::showPage(const QString& page) {
    for (int i = 0; i < tabs_->count(); ++i)
        if (tabs_->widget(i)->objectName() == page) tabs_->setCurrentIndex(i);
}

// When the window closes, not when it is deleted: by then another user may have signed in.
void FormPages::hideEvent(QHideEvent* event) {
    memory_.setValue(pageKey(this), page());
    QWidget::hideEvent(event);
}

EntryForm* FormPages::formOf(const QString& field) const {
    const auto found =
        std::find_if(forms_.begin(), forms_.end(), [&](const EntryForm* form) { return form->has(field); });
    assert(found != forms_.end());
    return *found;
}

void FormPages::goOnAfter(const EntryForm* form) {
    const auto at = std::find(forms_.begin(), forms_.end(), form);
    if (at + 1 == forms_.end()) {
        emit lastFieldDone();
        return;
    }
    showPage((*(at + 1))->parentWidget()->parentWidget()->objectName());
    (*(at + 1))->focusFirst();
}

void FormPages::focusInEvent(QFocusEvent*) { focusFirst(); }

void FormPages::checkDirty() {
    const bool dirty = isDirty();
    if (dirty == wasDirty_) return;
    wasDirty_ = dirty;
    emit dirtyChanged(dirty);
}

// To the next page and into its first field; past the last comes the first.
void FormPages::turn(int step) {
    const int count = tabs_->count();
    if (count == 0) return;
    tabs_->setCurrentIndex((tabs_->currentIndex() + step + count) % count);
    focusFirst();
}

} // namespace orvan
