#include "ui/catalogue/CatalogueTreeModel.h"

#include "ui/TextConvert.h"

namespace nutrovex {

namespace {

// An index's node packed in its internal id: the level, the group, the category and the food.
constexpr quintptr kLevelShift = 40;
constexpr quintptr kGroupShift = 32;
constexpr quintptr kCategoryShift = 16;

quintptr pack(const TreePlace& p) {
    const auto category = p.node == TreeNode::Group ? 0 : quintptr{p.category};
    const auto food = p.node == TreeNode::Food ? quintptr{p.food} : 0;
    return (quintptr{static_cast<uint8_t>(p.node)} << kLevelShift) |
           (static_cast<quintptr>(p.group) << kGroupShift) | (category << kCategoryShift) | food;
}

TreePlace unpack(quintptr id) {
    TreePlace p;
    p.node = static_cast<TreeNode>((id >> kLevelShift) & 0xFF);
    p.group = static_cast<int>((id >> kGroupShift) & 0xFF);
    if (p.node != TreeNode::Group) {
        p.category = static_cast<Position>((id >> kCategoryShift) & 0xFFFF);
    }
    if (p.node == TreeNode::Food) {
        p.food = static_cast<Position>(id & 0xFFFF);
    }
    return p;
}

}  // namespace

CatalogueTreeModel::CatalogueTreeModel(const CatalogueForm& form, QObject* parent)
    : QAbstractItemModel(parent), m_form(&form) {
    for (int g = 0; g < kFoodGroupCount; ++g) {
        m_shownCategories[static_cast<std::size_t>(g)] = categoryCount(g);
    }
}

int CatalogueTreeModel::categoryCount(int group) const {
    return m_form->categoryCount(group);
}

TreePlace CatalogueTreeModel::placeOf(const QModelIndex& index) const {
    return index.isValid() ? unpack(index.internalId()) : TreePlace{};
}

QModelIndex CatalogueTreeModel::indexOf(const TreePlace& place) const {
    if (!m_form->exists(place)) {
        return {};
    }
    switch (place.node) {
        case TreeNode::Group:
            return createIndex(place.group, 0, pack(place));
        case TreeNode::Category:
            return createIndex(place.category, 0, pack(place));
        case TreeNode::Food:
            return createIndex(place.food, 0, pack(place));
    }
    return {};
}

void CatalogueTreeModel::groupChanged(int group) {
    if (group < 0 || group >= kFoodGroupCount) {
        return;
    }
    const QModelIndex parent = indexOf(TreePlace::ofGroup(group));
    int& shown = m_shownCategories[static_cast<std::size_t>(group)];
    if (shown > 0) {
        beginRemoveRows(parent, 0, shown - 1);
        shown = 0;
        endRemoveRows();
    }
    const int now = categoryCount(group);
    if (now > 0) {
        beginInsertRows(parent, 0, now - 1);
        shown = now;
        endInsertRows();
    }
}

void CatalogueTreeModel::reload() {
    beginResetModel();
    for (int g = 0; g < kFoodGroupCount; ++g) {
        m_shownCategories[static_cast<std::size_t>(g)] = categoryCount(g);
    }
    endResetModel();
}

QModelIndex CatalogueTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column != 0 || row >= rowCount(parent)) {
        return {};
    }
    const auto at = static_cast<Position>(row);
    if (!parent.isValid()) {
        return createIndex(row, 0, pack(TreePlace::ofGroup(row)));
    }
    const TreePlace p = placeOf(parent);
    if (p.node == TreeNode::Group) {
        return createIndex(row, 0, pack(TreePlace::ofCategory(p.group, at)));
    }
    return createIndex(row, 0, pack(TreePlace::ofFood(p.group, p.category, at)));
}

QModelIndex CatalogueTreeModel::parent(const QModelIndex& child) const {
    const TreePlace p = placeOf(child);
    if (!child.isValid() || p.node == TreeNode::Group) {
        return {};
    }
    if (p.node == TreeNode::Category) {
        return createIndex(p.group, 0, pack(TreePlace::ofGroup(p.group)));
    }
    return createIndex(p.category, 0, pack(TreePlace::ofCategory(p.group, p.category)));
}

int CatalogueTreeModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) {
        return kFoodGroupCount;
    }
    const TreePlace p = placeOf(parent);
    switch (p.node) {
        case TreeNode::Group:
            return m_shownCategories[static_cast<std::size_t>(p.group)];
        case TreeNode::Category:
            return m_form->foodCount(p.group, p.category);
        case TreeNode::Food:
            break;
    }
    return 0;
}

int CatalogueTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant CatalogueTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::AccessibleTextRole) {
        return toQString(m_form->label(placeOf(index)));
    }
    return {};
}

Qt::ItemFlags CatalogueTreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (canRenameInPlace(placeOf(index).node)) {
        f |= Qt::ItemIsEditable;
    }
    if (placeOf(index).node == TreeNode::Food) {
        f |= Qt::ItemNeverHasChildren;
    }
    return f;
}

bool CatalogueTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || !m_renamer) {
        return false;
    }
    m_renamer(placeOf(index), value.toString());
    return false;
}

}  // namespace nutrovex
