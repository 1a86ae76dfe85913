#include "forms/foods/RecipeEditorForm.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/Format.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodFields.h"
#include "session/Session.h"

namespace nutrovex {

namespace {

std::string amountText(float amount) {
    std::string text = formatText("%.2f", static_cast<double>(amount));
    while (!text.empty() && text.back() == '0') {
        text.pop_back();
    }
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::optional<double> numberOf(std::string_view text) {
    double value = 0.0;
    const char* end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc() || at != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::string valueText(int nutrient, float value) {
    return nutrient == kCalories ? formatText("%.0f", static_cast<double>(value))
                                 : formatText("%.1f", static_cast<double>(value));
}

}  // namespace

RecipeShelf recipeShelf(Session& session) {
    RecipeShelf shelf{&session.catalogue(), &session.recipes(), &session.foodRunState().finder, {}};
    if (session.userOpen() && !session.recipesReadWhole()) {
        shelf.failure = session.recipesFailure();
    } else if (session.userOpen() && !session.catalogueReadWhole()) {
        shelf.failure = session.catalogueFailure();
    }
    return shelf;
}

RecipeEditorForm RecipeEditorForm::newRecipe(RecipeShelf shelf, RecipeDraft draft) {
    RecipeEditorForm form(std::move(shelf));
    form.m_recipe = std::move(draft.recipe);
    form.m_servings = std::to_string(form.m_recipe.servings);
    for (const RecipeIngredient& in : form.m_recipe.ingredients) {
        form.m_amounts.push_back(amountText(in.amount));
    }
    form.m_leftOut = std::move(draft.leftOut);
    form.m_selected = form.m_recipe.ingredients.empty() ? -1 : 0;
    form.m_pickGroup = form.m_recipe.group;
    form.fixPick();
    return form;
}

bool RecipeEditorForm::isRecipeFood(const RecipeShelf& shelf, const FoodPlace& food) {
    for (const Recipe& r : *shelf.book) {
        if (recipeFoodPlace(*shelf.catalogue, r) == food) {
            return true;
        }
    }
    return false;
}

std::optional<RecipeEditorForm> RecipeEditorForm::editFood(RecipeShelf shelf,
                                                           const FoodPlace& food) {
    for (const Recipe& r : *shelf.book) {
        if (recipeFoodPlace(*shelf.catalogue, r) == food) {
            RecipeEditorForm form = newRecipe(std::move(shelf), RecipeDraft{r, {}});
            form.m_editedName = r.name;
            return form;
        }
    }
    return std::nullopt;
}

void RecipeEditorForm::fixPick() {
    const auto& groups = m_shelf.catalogue->groups;
    m_pickGroup = std::clamp(m_pickGroup, 0, kFoodGroupCount - 1);
    const auto& categories = groups[static_cast<std::size_t>(m_pickGroup)];
    if (categories.empty()) {
        m_pickCategory = -1;
        m_pickFood = -1;
        return;
    }
    m_pickCategory = std::clamp(m_pickCategory, 0, static_cast<int>(categories.size()) - 1);
    const auto& foods = categories[static_cast<std::size_t>(m_pickCategory)].foods;
    m_pickFood = foods.empty() ? -1 : std::clamp(m_pickFood, 0, static_cast<int>(foods.size()) - 1);
}

const FoodItem* RecipeEditorForm::pickedFood() const {
    if (m_pickCategory < 0 || m_pickFood < 0) {
        return nullptr;
    }
    const FoodCategory* c =
        categoryAt(*m_shelf.catalogue, m_pickGroup, static_cast<Position>(m_pickCategory));
    return c != nullptr && static_cast<std::size_t>(m_pickFood) < c->foods.size()
               ? &c->foods[static_cast<std::size_t>(m_pickFood)]
               : nullptr;
}

const FoodItem* RecipeEditorForm::lineFood(std::size_t line) const {
    const RecipeIngredient& in = m_recipe.ingredients[line];
    const FoodCategory* c = categoryAt(*m_shelf.catalogue, in.group,
                                       findCategory(*m_shelf.catalogue, in.group, in.category));
    if (c == nullptr) {
        return nullptr;
    }
    const Position item = findFoodItem(*c, in.food);
    return item == kNoPosition ? nullptr : &c->foods[item];
}

RecipeEditorView RecipeEditorForm::view() const {
    RecipeEditorView v;
    v.caption = m_editedName ? "Edit Recipe" : "New Recipe";
    v.name = m_recipe.name;
    v.group = m_recipe.group;
    v.servings = m_servings;
    Recipe measured = m_recipe;
    measured.servings = static_cast<uint32_t>(numberOf(m_servings).value_or(1.0));
    const RecipeDish dish = measureRecipe(*m_shelf.catalogue, measured);
    for (std::size_t i = 0; i < m_recipe.ingredients.size(); ++i) {
        const RecipeIngredient& in = m_recipe.ingredients[i];
        const IngredientValues& values = dish.ingredients[i];
        std::string line = in.food + ", " + amountText(in.amount) + " " +
                           (isKnownUnit(in.unit) ? unitName(in.unit) : "?");
        line += values.problem ? std::string(": cannot be measured")
                               : ": " + valueText(kCalories, values.values[kCalories]) + " cal";
        v.lines.push_back(std::move(line));
        if (values.problem) {
            v.problems.push_back(values.problem->text);
        }
    }
    v.selected = m_selected;
    if (m_selected >= 0) {
        const auto line = static_cast<std::size_t>(m_selected);
        v.lineEnabled = true;
        v.amount = m_amounts[line];
        const FoodItem* food = lineFood(line);
        v.units = food != nullptr ? loggingUnits(*food)
                                  : std::vector<ServingUnit>{m_recipe.ingredients[line].unit};
        const auto at = std::find(v.units.begin(), v.units.end(), m_recipe.ingredients[line].unit);
        v.unit = at == v.units.end() ? -1 : static_cast<int>(at - v.units.begin());
    }
    v.pickGroup = m_pickGroup;
    for (const FoodCategory& c : m_shelf.catalogue->groups[static_cast<std::size_t>(m_pickGroup)]) {
        v.categoryNames.push_back(c.name.view());
    }
    v.pickCategory = m_pickCategory;
    if (const FoodCategory* c =
            categoryAt(*m_shelf.catalogue, m_pickGroup,
                       m_pickCategory < 0 ? kNoPosition : static_cast<Position>(m_pickCategory))) {
        for (const FoodItem& f : c->foods) {
            v.foodNames.push_back(f.name.view());
        }
    }
    v.pickFood = m_pickFood;
    v.canAdd = pickedFood() != nullptr && m_recipe.ingredients.size() < kMaxRecipeIngredients &&
               m_shelf.failure.empty();
    for (int n = 0; n < kNutrientCount; ++n) {
        v.perServing[static_cast<std::size_t>(n)] =
            valueText(n, dish.perServing[static_cast<std::size_t>(n)]);
        v.whole[static_cast<std::size_t>(n)] =
            valueText(n, dish.whole[static_cast<std::size_t>(n)]);
    }
    v.leftOut = m_leftOut;
    if (!m_shelf.failure.empty()) {
        v.canSave = false;
        const bool stop = m_shelf.failure.back() == '.';
        v.notice = "Recipes cannot be saved now: " + m_shelf.failure + (stop ? "" : ".") +
                   " Nothing is saved until the file can be read again.";
    }
    return v;
}

Outcome RecipeEditorForm::edit(Field field, std::string_view text) {
    const auto line = static_cast<std::size_t>(std::max(m_selected, 0));
    const bool hasLine = m_selected >= 0;
    switch (field) {
        case Field::Name:
            m_recipe.name = std::string(text);
            break;
        case Field::Group:
            for (int g = 0; g < kFoodGroupCount; ++g) {
                if (text == kFoodGroupNames[g]) {
                    m_recipe.group = static_cast<uint8_t>(g);
                }
            }
            break;
        case Field::Servings:
            m_servings = std::string(text);
            break;
        case Field::Amount:
            if (hasLine) {
                m_amounts[line] = std::string(text);
                if (const std::optional<double> a = numberOf(text)) {
                    m_recipe.ingredients[line].amount = static_cast<float>(*a);
                }
            }
            break;
        case Field::Unit:
            if (hasLine) {
                if (const std::optional<ServingUnit> u = unitNamed(text)) {
                    m_recipe.ingredients[line].unit = *u;
                }
            }
            break;
        case Field::PickGroup:
            for (int g = 0; g < kFoodGroupCount; ++g) {
                if (text == kFoodGroupNames[g]) {
                    pick(g, 0, 0);
                }
            }
            break;
        case Field::PickCategory: {
            const Position c = findCategory(*m_shelf.catalogue, m_pickGroup, text);
            if (c != kNoPosition) {
                pick(m_pickGroup, c, 0);
            }
            break;
        }
        case Field::PickFood:
            if (const FoodCategory* c = categoryAt(
                    *m_shelf.catalogue, m_pickGroup,
                    m_pickCategory < 0 ? kNoPosition : static_cast<Position>(m_pickCategory))) {
                if (const Position f = findFoodItem(*c, text); f != kNoPosition) {
                    m_pickFood = f;
                }
            }
            break;
    }
    return {};
}

void RecipeEditorForm::selectLine(int line) {
    m_selected =
        line >= 0 && static_cast<std::size_t>(line) < m_recipe.ingredients.size() ? line : -1;
}

FindFoodForm RecipeEditorForm::findForm() const {
    return FindFoodForm(*m_shelf.catalogue, *m_shelf.finder);
}

void RecipeEditorForm::pick(int group, int category, int food) {
    m_pickGroup = group;
    m_pickCategory = category;
    m_pickFood = food;
    fixPick();
}

Outcome RecipeEditorForm::command(Command id) {
    if (!m_shelf.failure.empty()) {
        return {};
    }
    switch (id) {
        case Command::Add: {
            const FoodItem* food = pickedFood();
            if (food == nullptr || m_recipe.ingredients.size() >= kMaxRecipeIngredients) {
                return {};
            }
            const FoodCategory& c =
                m_shelf.catalogue->groups[static_cast<std::size_t>(m_pickGroup)]
                                         [static_cast<std::size_t>(m_pickCategory)];
            m_recipe.ingredients.push_back({static_cast<uint8_t>(m_pickGroup), c.name.str(),
                                            food->name.str(), food->serving.amount,
                                            food->serving.unit});
            m_amounts.push_back(amountText(food->serving.amount));
            m_selected = static_cast<int>(m_recipe.ingredients.size()) - 1;
            return {};
        }
        case Command::Remove:
            if (m_selected >= 0) {
                const auto line = static_cast<std::size_t>(m_selected);
                m_recipe.ingredients.erase(m_recipe.ingredients.begin() +
                                           static_cast<std::ptrdiff_t>(line));
                m_amounts.erase(m_amounts.begin() + static_cast<std::ptrdiff_t>(line));
                selectLine(std::min(m_selected, static_cast<int>(m_amounts.size()) - 1));
            }
            return {};
        case Command::Save:
            break;
    }
    const auto refuse = [](const std::string& why) {
        return Outcome{.message = ScreenMessage{"The recipe cannot be saved: " + why + ".",
                                                caption(), MessageKind::Warning}};
    };
    Recipe wanted = m_recipe;
    const std::optional<double> servings = numberOf(m_servings);
    if (!servings || *servings < 1 || *servings > kMaxRecipeServings ||
        *servings != std::floor(*servings)) {
        return refuse("the servings are a whole number from 1 to " +
                      std::to_string(kMaxRecipeServings));
    }
    wanted.servings = static_cast<uint32_t>(*servings);
    for (std::size_t i = 0; i < m_amounts.size(); ++i) {
        if (!numberOf(m_amounts[i])) {
            return refuse(ingredientLabel(wanted, i) + ": type its amount");
        }
    }
    RecipeSaveResult result = saveRecipe(*m_shelf.catalogue, *m_shelf.book, std::move(wanted),
                                         m_editedName ? RecipeSaveMode::Edit : RecipeSaveMode::New,
                                         m_editedName.value_or(std::string()));
    if (!result.ok()) {
        return refuse(result.problem->text);
    }
    m_saved = result.place;
    m_recipe = *findRecipe(*m_shelf.book, result.food.name.view());
    m_editedName = m_recipe.name;
    return {.notices = result.notices, .save = SavePoint::Catalogue};
}

}  // namespace nutrovex
