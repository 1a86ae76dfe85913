#pragma once

#include <string>

namespace nutrovex {

// The about box, reached from every screen's "About...": the product's name, version and licence
// over a separator, and "OK".
struct AboutForm {
    [[nodiscard]] static std::string title() { return "About Nutrovex"; }
    [[nodiscard]] static std::string productName() { return "Nutrovex"; }
    [[nodiscard]] static std::string version() { return "V4.0.0.0"; }
    [[nodiscard]] static std::string licence() {
        return "Free software under GPL-3.0-or-later.\n"
               "The food data it ships (USDA) is in the public domain.";
    }
    [[nodiscard]] static std::string okText() { return "OK"; }
};

}  // namespace nutrovex
