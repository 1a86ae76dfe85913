#include "foods/CatalogueOps.h"

#include <new>
#include <utility>

#include "core/Names.h"

namespace nutrovex {

namespace {

bool validGroup(int group) {
    return group >= 0 && group < kFoodGroupCount;
}

CategoryList* groupList(FoodCatalogue& catalogue, int group) {
    return validGroup(group) ? &catalogue.groups[static_cast<std::size_t>(group)] : nullptr;
}

const CategoryList* groupList(const FoodCatalogue& catalogue, int group) {
    return validGroup(group) ? &catalogue.groups[static_cast<std::size_t>(group)] : nullptr;
}

FoodCategory* categoryOf(FoodCatalogue& catalogue, int group, Position pos) {
    CategoryList* list = groupList(catalogue, group);
    return (list && pos < list->size()) ? &(*list)[pos] : nullptr;
}

// The first entry whose name is not less than name: where name goes in name order.
template <typename List, typename NameOf>
std::size_t insertionPoint(const List& list, std::string_view name, NameOf nameOf) {
    std::size_t i = 0;
    while (i < list.size() && compareNames(nameOf(list[i]), name) < 0) {
        ++i;
    }
    return i;
}

template <typename List, typename NameOf>
Position findByName(const List& list, std::string_view name, NameOf nameOf) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (nameOf(list[i]) == name) {
            return static_cast<Position>(i);
        }
    }
    return kNoPosition;
}

std::string_view categoryName(const FoodCategory& c) {
    return c.name.view();
}
std::string_view foodName(const FoodItem& f) {
    return f.name.view();
}

void changed(FoodCatalogue& catalogue) {
    catalogue.renumberGroupChunks();
    catalogue.newRevision();
}

// Puts category into the group at its name's place; kNoPosition when memory fails.
Position insertCategory(FoodCatalogue& catalogue, CategoryList& list, FoodCategory category) {
    if (list.size() >= kNoPosition) {
        return kNoPosition;
    }
    const std::size_t at = insertionPoint(list, category.name.view(), categoryName);
    try {
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(at), std::move(category));
    } catch (const std::bad_alloc&) {
        return kNoPosition;
    }
    changed(catalogue);
    return static_cast<Position>(at);
}

// Removes the food at item and inserts replacement at its name's place, with the rules every
// renamed or edited food follows.
Position reinsertFood(FoodCatalogue& catalogue, int group, FoodCategory& category, Position item,
                      FoodItem replacement) {
    replacement.group = static_cast<uint16_t>(group);
    replacement.loggedFlag = 1;
    replacement.key = nextKey(catalogue.header.keyCounter);
    FoodList& foods = category.foods;
    foods.erase(foods.begin() + item);
    // The erase left room, so this insert does not allocate.
    const std::size_t at = insertionPoint(foods, replacement.name.view(), foodName);
    foods.insert(foods.begin() + static_cast<std::ptrdiff_t>(at), std::move(replacement));
    changed(catalogue);
    return static_cast<Position>(at);
}

}  // namespace

Position findCategory(const FoodCatalogue& catalogue, int group, std::string_view name) {
    const CategoryList* list = groupList(catalogue, group);
    return list ? findByName(*list, name, categoryName) : kNoPosition;
}

bool groupIsFull(const FoodCatalogue& catalogue, int group) {
    const CategoryList* list = groupList(catalogue, group);
    return list && list->size() >= kMaxCategoriesPerGroup;
}

const FoodCategory* categoryAt(const FoodCatalogue& catalogue, int group, Position pos) {
    const CategoryList* list = groupList(catalogue, group);
    return (list && pos < list->size()) ? &(*list)[pos] : nullptr;
}

const FoodItem* foodAt(const FoodCatalogue& catalogue, int group, Position category,
                       Position item) {
    const FoodCategory* c = categoryAt(catalogue, group, category);
    return (c && item < c->foods.size()) ? &c->foods[item] : nullptr;
}

Position addCategory(FoodCatalogue& catalogue, int group, std::string_view name) {
    CategoryList* list = groupList(catalogue, group);
    if (!list || name.empty() || findByName(*list, name, categoryName) != kNoPosition) {
        return kNoPosition;
    }
    const PackedKey counter = catalogue.header.keyCounter;
    FoodCategory category;
    category.name = name;
    category.key = nextKey(catalogue.header.keyCounter);
    const Position pos = insertCategory(catalogue, *list, std::move(category));
    if (pos == kNoPosition) {
        catalogue.header.keyCounter = counter;
    }
    return pos;
}

Position renameCategory(FoodCatalogue& catalogue, int group, Position pos, std::string_view name) {
    CategoryList* list = groupList(catalogue, group);
    if (!list || pos >= list->size() || name.empty() ||
        findByName(*list, name, categoryName) != kNoPosition) {
        return kNoPosition;
    }
    FoodCategory category = std::move((*list)[pos]);
    list->erase(list->begin() + pos);
    category.name = name;
    // The erase left room: the insert cannot run out of memory.
    const std::size_t at = insertionPoint(*list, category.name.view(), categoryName);
    list->insert(list->begin() + static_cast<std::ptrdiff_t>(at), std::move(category));
    changed(catalogue);
    return static_cast<Position>(at);
}

bool deleteCategory(FoodCatalogue& catalogue, int group, Position pos) {
    CategoryList* list = groupList(catalogue, group);
    if (!list || pos >= list->size()) {
        return false;
    }
    list->erase(list->begin() + pos);
    changed(catalogue);
    return true;
}

void deleteAllCategories(FoodCatalogue& catalogue, int group) {
    while (deleteCategory(catalogue, group, 0)) {
    }
}

Position findFoodItem(const FoodCategory& category, std::string_view name) {
    return findByName(category.foods, name, foodName);
}

bool categoryIsFull(const FoodCategory& category) {
    return category.foods.size() >= kMaxFoodsPerCategory;
}

Position addFoodItem(FoodCatalogue& catalogue, int group, Position category, const FoodItem& item) {
    FoodCategory* c = categoryOf(catalogue, group, category);
    if (!c || item.name.empty() || findFoodItem(*c, item.name.view()) != kNoPosition ||
        c->foods.size() >= kNoPosition) {
        return kNoPosition;
    }
    const PackedKey counter = catalogue.header.keyCounter;
    try {
        FoodItem copy = item;
        copy.group = static_cast<uint16_t>(group);
        copy.key = nextKey(catalogue.header.keyCounter);
        copy.loggedFlag = 1;
        const std::size_t at = insertionPoint(c->foods, copy.name.view(), foodName);
        c->foods.insert(c->foods.begin() + static_cast<std::ptrdiff_t>(at), std::move(copy));
        changed(catalogue);
        return static_cast<Position>(at);
    } catch (const std::bad_alloc&) {
        catalogue.header.keyCounter = counter;
        return kNoPosition;
    }
}

Position renameFoodItem(FoodCatalogue& catalogue, int group, Position category, Position item,
                        std::string_view name) {
    FoodCategory* c = categoryOf(catalogue, group, category);
    if (!c || item >= c->foods.size() || name.empty() || findFoodItem(*c, name) != kNoPosition) {
        return kNoPosition;
    }
    FoodItem renamed = c->foods[item];
    renamed.name = name;
    renamed.text2 = name;
    return reinsertFood(catalogue, group, *c, item, std::move(renamed));
}

Position replaceFoodItem(FoodCatalogue& catalogue, int group, Position category, Position item,
                         const FoodItem& edited) {
    FoodCategory* c = categoryOf(catalogue, group, category);
    if (!c || item >= c->foods.size() || edited.name.empty()) {
        return kNoPosition;
    }
    const Position holder = findFoodItem(*c, edited.name.view());
    if (holder != kNoPosition && holder != item) {
        return kNoPosition;
    }
    FoodItem replacement = edited;
    replacement.text2 = edited.name;
    return reinsertFood(catalogue, group, *c, item, std::move(replacement));
}

bool deleteFoodItem(FoodCatalogue& catalogue, int group, Position category, Position item) {
    FoodCategory* c = categoryOf(catalogue, group, category);
    if (!c || item >= c->foods.size()) {
        return false;
    }
    c->foods.erase(c->foods.begin() + item);
    changed(catalogue);
    return true;
}

bool CatalogueClipboard::copyCategory(const FoodCatalogue& catalogue, int group, Position pos) {
    const FoodCategory* c = categoryAt(catalogue, group, pos);
    if (!c) {
        return false;
    }
    try {
        FoodCategory held;
        held.copyFrom(*c);
        m_category = std::move(held);
        m_food.reset();
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool CatalogueClipboard::cutCategory(FoodCatalogue& catalogue, int group, Position pos) {
    return copyCategory(catalogue, group, pos) && deleteCategory(catalogue, group, pos);
}

bool CatalogueClipboard::copyFood(const FoodCatalogue& catalogue, int group, Position category,
                                  Position item) {
    const FoodItem* f = foodAt(catalogue, group, category, item);
    if (!f) {
        return false;
    }
    try {
        m_food = *f;
        m_category.reset();
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool CatalogueClipboard::cutFood(FoodCatalogue& catalogue, int group, Position category,
                                 Position item) {
    return copyFood(catalogue, group, category, item) &&
           deleteFoodItem(catalogue, group, category, item);
}

Position CatalogueClipboard::pasteCategory(FoodCatalogue& catalogue, int group) const {
    CategoryList* list = groupList(catalogue, group);
    if (!m_category || !list || list->size() >= kMaxCategoriesPerGroup) {
        return kNoPosition;
    }
    const std::string name = uniqueName(m_category->name.view(), [&](std::string_view n) {
        return findByName(*list, n, categoryName) != kNoPosition;
    });
    if (name.empty() || findByName(*list, name, categoryName) != kNoPosition) {
        return kNoPosition;
    }
    const PackedKey counter = catalogue.header.keyCounter;
    try {
        FoodCategory copy;
        copy.copyFrom(*m_category);
        copy.name = name;
        copy.key = nextKey(catalogue.header.keyCounter);
        for (FoodItem& f : copy.foods) {
            f.group = static_cast<uint16_t>(group);
        }
        const Position pos = insertCategory(catalogue, *list, std::move(copy));
        if (pos == kNoPosition) {
            catalogue.header.keyCounter = counter;
        }
        return pos;
    } catch (const std::bad_alloc&) {
        catalogue.header.keyCounter = counter;
        return kNoPosition;
    }
}

Position CatalogueClipboard::pasteFood(FoodCatalogue& catalogue, int group,
                                       Position category) const {
    FoodCategory* c = categoryOf(catalogue, group, category);
    if (!m_food || !c || categoryIsFull(*c)) {
        return kNoPosition;
    }
    try {
        FoodItem copy = *m_food;
        copy.name = uniqueName(m_food->name.view(), [&](std::string_view n) {
            return findFoodItem(*c, n) != kNoPosition;
        });
        copy.text2 = copy.name;  // the find searches the second name, as after a rename
        return addFoodItem(catalogue, group, category, copy);
    } catch (const std::bad_alloc&) {
        return kNoPosition;
    }
}

void CatalogueClipboard::clear() {
    m_category.reset();
    m_food.reset();
}

}  // namespace nutrovex
