#pragma once

#include <QTreeView>

#include "forms/catalogue/CatalogueForm.h"

namespace nutrovex {

class CatalogueTreeModel;

// The catalogue tree: groups, their categories and their foods in name order. Labels of
// categories and foods are edited in place (F2), at most 21 characters; Enter on a food, Delete,
// a double tap and the secondary button are passed on to the screen.
class CFoodTreeCtrl : public QTreeView {
    Q_OBJECT

public:
    explicit CFoodTreeCtrl(QWidget* parent = nullptr);

    void setCatalogueModel(CatalogueTreeModel* model);
    [[nodiscard]] TreePlace currentPlace() const;
    // Selects the node, opening its parents, and scrolls it into view.
    void selectPlace(const TreePlace& place);
    void editPlace(const TreePlace& place);
    // The label editor is open.
    [[nodiscard]] bool editing() const { return state() == EditingState; }

Q_SIGNALS:
    void foodEntered(const QModelIndex& index);
    void deletePressed(const QModelIndex& index);
    void nodeDoubleClicked(const QModelIndex& index);
    void menuRequested(const QPoint& globalPos);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    CatalogueTreeModel* m_model = nullptr;
};

}  // namespace nutrovex
