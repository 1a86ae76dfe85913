#pragma once

#include <string>

#include "core/ScreenMessage.h"

namespace nutrovex {

struct AboutView {
    std::string title = "About Nutrovex";
    std::string productName = "Nutrovex";
    std::string version = "V4.0.0.0";
    std::string licence =
        "Free software under GPL-3.0-or-later.\n"
        "The food data it ships (USDA) is in the public domain.";
    std::string okText = "OK";
};

// The about box, reached from every screen's "About...": the product's name, version and licence
// over a separator, and "OK".
class AboutForm {
public:
    [[nodiscard]] AboutView view() const { return {}; }
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }
};

}  // namespace nutrovex
