#pragma once

#include <QIcon>
#include <QImage>
#include <QSize>
#include <QString>
#include <cstdint>
#include <string>

#include "forms/frame/HelpForm.h"

namespace nutrovex {

// The program's own texts and artwork, compiled into the program.

// The help text of a string id as stored (Windows-1252, CR LF line breaks); empty when the
// program has no text of that id.
[[nodiscard]] std::string loadHelpText(uint16_t id);
// The source a help screen's form reads its texts from.
[[nodiscard]] HelpForm::TextSource helpTextSource();

// Artwork, as SVG resource paths.
inline const QString kBannerArt = QStringLiteral(":/art/banner.svg");
inline const QString kApplicationIconArt = QStringLiteral(":/art/nutrovex.svg");
inline const QString kPreviousDayArt = QStringLiteral(":/art/previous-day.svg");
inline const QString kNextDayArt = QStringLiteral(":/art/next-day.svg");
inline const QString kRuleArt = QStringLiteral(":/art/rule.svg");
inline const QString kLegendLineArt = QStringLiteral(":/art/legend-line.svg");
// Steps 1 to 4 of the main menu.
[[nodiscard]] QString stepArt(int step);
// Food groups 0 to 7, one picture each; the summary group 8 has none.
[[nodiscard]] QString foodGroupArt(int group);

// Draws an SVG resource into a transparent image of the given size (device pixels); a null
// image when the resource is missing or not valid SVG.
[[nodiscard]] QImage renderArt(const QString& path, QSize size);
// The program's icon, scalable, for the windows and the desktop.
[[nodiscard]] QIcon applicationIcon();

}  // namespace nutrovex
