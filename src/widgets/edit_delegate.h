// widgets/edit_delegate.h — editors and painting of an entry grid's cells. What is typed goes to the grid
// through `commit`; the keys that end an editor come back as `leave`.
#pragma once

#include "widgets/cell_rules.h"

#include <functional>
#include <QPointer>
#include <QStyledItemDelegate>

class QKeyEvent;

namespace orvan {

class EditDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    struct Host {
        std::function<const EditColumn&(const QModelIndex&)> column;
        std::function<QString(const QModelIndex&)> value; // of an accepted cell
        std::function<void(const QModelIndex&, const QString& typed)> commit;
        std::function<void(Qt::Key)> leave; // Enter, Tab, Backtab, arrows: after the editor has closed
    };
    EditDelegate(Host host, QObject* parent) : QStyledItemDelegate(parent), host_(std::move(host)) {}

    // The editor has opened. Replace: typing replaces its text and arrows leave it; else the caret is at the
    // end.
    void begin(bool replace);
    QWidget* editor() const { return editor_; } // the open one, or nullptr
    void finish();                              // takes the text of the open editor

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

  private:
    bool endsEditor(const QKeyEvent& key) const;
    Host host_;
    bool replace_ = true;
    mutable QPointer<QWidget> editor_;
};

} // namespace orvan
