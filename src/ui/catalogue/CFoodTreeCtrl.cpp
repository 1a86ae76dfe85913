#include "ui/catalogue/CFoodTreeCtrl.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>

#include "ui/catalogue/CatalogueTreeModel.h"

namespace nutrovex {

namespace {

// The label editor takes at most 21 characters, categories and foods alike.
class LabelDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            line->setMaxLength(static_cast<int>(kRenameLimit));
            line->setAccessibleName(QStringLiteral("Name"));
        }
        return editor;
    }
};

}  // namespace

CFoodTreeCtrl::CFoodTreeCtrl(QWidget* parent) : QTreeView(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::EditKeyPressed);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setExpandsOnDoubleClick(false);
    setItemDelegate(new LabelDelegate(this));
    setAccessibleName(QStringLiteral("Food catalogue"));
}

void CFoodTreeCtrl::setCatalogueModel(CatalogueTreeModel* model) {
    m_model = model;
    setModel(model);
}

TreePlace CFoodTreeCtrl::currentPlace() const {
    return m_model ? m_model->placeOf(currentIndex()) : TreePlace{};
}

void CFoodTreeCtrl::selectPlace(const TreePlace& place) {
    if (!m_model) {
        return;
    }
    const QModelIndex index = m_model->indexOf(place);
    if (!index.isValid()) {
        return;
    }
    for (QModelIndex up = index.parent(); up.isValid(); up = up.parent()) {
        expand(up);
    }
    setCurrentIndex(index);
    scrollTo(index);
}

void CFoodTreeCtrl::editPlace(const TreePlace& place) {
    selectPlace(place);
    const QModelIndex index = currentIndex();
    if (index.isValid() && (index.flags() & Qt::ItemIsEditable)) {
        edit(index);
    }
}

void CFoodTreeCtrl::keyPressEvent(QKeyEvent* event) {
    if (state() != QAbstractItemView::EditingState) {
        const TreePlace place = currentPlace();
        const bool hasNode = currentIndex().isValid();
        if (hasNode && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
            place.node == TreeNode::Food) {
            Q_EMIT foodEntered(currentIndex());
            return;
        }
        if (hasNode && event->key() == Qt::Key_Delete) {
            Q_EMIT deletePressed(currentIndex());
            return;
        }
    }
    QTreeView::keyPressEvent(event);
}

void CFoodTreeCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeView::mouseDoubleClickEvent(event);
    if (currentIndex().isValid()) {
        Q_EMIT nodeDoubleClicked(currentIndex());
    }
}

void CFoodTreeCtrl::contextMenuEvent(QContextMenuEvent* event) {
    // The secondary press already selected the node under it.
    const QModelIndex under = indexAt(event->pos());
    if (under.isValid()) {
        setCurrentIndex(under);
    }
    setFocus();
    Q_EMIT menuRequested(event->globalPos());
}

}  // namespace nutrovex
