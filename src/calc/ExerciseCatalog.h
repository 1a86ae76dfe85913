#pragma once

#include <cstdint>
#include <span>

namespace nutrovex {

// The compiled-in exercise catalogue: 27 types, their variants and sub-variants. Names are shown
// and stored exactly as they are here ("Repelling", "10  mph" with two blanks).
inline constexpr int kExerciseTypeCount = 27;
inline constexpr int16_t kUserDefinedExercise = 26;

// A choice in the catalogue, as every exercise entry keeps it; -1 where the parent has no list.
struct ExerciseSelection {
    int16_t type = 0;
    int16_t variant = 0;
    int16_t sub = 0;

    friend bool operator==(const ExerciseSelection&, const ExerciseSelection&) = default;
};

// A run of names in the catalogue's one flat name table.
using ExerciseNames = std::span<const char* const>;

// The 27 type names in code order (the order of the type combo box).
[[nodiscard]] ExerciseNames exerciseTypeNames();
// The variants of a type; empty for a type without variants or out of range.
[[nodiscard]] ExerciseNames exerciseVariantNames(int type);
// The sub-variants of a variant; empty when it has none or the pair is out of range.
[[nodiscard]] ExerciseNames exerciseSubVariantNames(int type, int variant);
// The name of a type, or "" out of range.
[[nodiscard]] const char* exerciseTypeName(int type);

// The selection behind the type, variant and sub-variant combo boxes. Setting a level selects the
// first entry of the level below when there is one, else -1 there.
class ExerciseCursor {
public:
    // "Aerobics", "General", "Low Impact".
    ExerciseCursor() { setType(0); }

    [[nodiscard]] int16_t type() const { return m_selection.type; }
    [[nodiscard]] int16_t variant() const { return m_selection.variant; }
    [[nodiscard]] int16_t subVariant() const { return m_selection.sub; }
    [[nodiscard]] const ExerciseSelection& selection() const { return m_selection; }

    // Any value is kept; one outside the catalogue simply has no lists below it.
    void setType(int16_t type);
    void setVariant(int16_t variant);
    void setSubVariant(int16_t sub) { m_selection.sub = sub; }
    // Type, then variant, then sub-variant, as the edit screen restores a logged entry.
    void select(const ExerciseSelection& selection);

    [[nodiscard]] int variantCount() const { return static_cast<int>(m_variants.size()); }
    [[nodiscard]] int subVariantCount() const { return static_cast<int>(m_subVariants.size()); }
    [[nodiscard]] static ExerciseNames typeNames() { return exerciseTypeNames(); }
    [[nodiscard]] ExerciseNames variantNames() const { return m_variants; }
    [[nodiscard]] ExerciseNames subVariantNames() const { return m_subVariants; }

private:
    ExerciseSelection m_selection;
    ExerciseNames m_variants;
    ExerciseNames m_subVariants;
};

}  // namespace nutrovex
