#pragma once

#include <QAbstractItemModel>
#include <array>
#include <functional>

#include "forms/catalogue/CatalogueForm.h"

namespace nutrovex {

// The catalogue's three levels as a model over the catalogue itself: no copy of a name and no
// node object is made, so a view builds the rows of a group or category only when it is
// expanded, and a catalogue of 200,000 foods opens as eight rows.
class CatalogueTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    using Renamer = std::function<void(const TreePlace& place, const QString& text)>;

    CatalogueTreeModel(const CatalogueForm& form, QObject* parent = nullptr);

    // The label editor's text goes to renamer instead of into the model.
    void setRenamer(Renamer renamer) { m_renamer = std::move(renamer); }

    [[nodiscard]] TreePlace placeOf(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex indexOf(const TreePlace& place) const;

    // The rows of one group are built again after its categories or foods changed.
    void groupChanged(int group);
    // Everything is built again (a load, an import).
    void reload();

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    [[nodiscard]] int categoryCount(int group) const;

    const CatalogueForm* m_form;
    Renamer m_renamer;
    // The category rows a view was last told about, per group.
    std::array<int, kFoodGroupCount> m_shownCategories{};
};

}  // namespace nutrovex
