#include "ui/Resources.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

// Resources compiled into a static library are registered only when something asks for them.
static void registerResources() {
    Q_INIT_RESOURCE(nutrovex);
}

namespace nutrovex {
namespace {

void ensureRegistered() {
    static const bool done = [] {
        registerResources();
        return true;
    }();
    (void)done;
}

}  // namespace

std::string loadHelpText(uint16_t id) {
    ensureRegistered();
    QFile file(QStringLiteral(":/help/%1.txt").arg(id));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = file.readAll();
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

HelpForm::TextSource helpTextSource() {
    return [](uint16_t id) { return loadHelpText(id); };
}

QString stepArt(int step) {
    if (step < 1 || step > 4) {
        return {};
    }
    return QStringLiteral(":/art/step-%1.svg").arg(step);
}

QString foodGroupArt(int group) {
    if (group < 0 || group > 7) {
        return {};
    }
    return QStringLiteral(":/art/food-group-%1.svg").arg(group);
}

QImage renderArt(const QString& path, QSize size) {
    ensureRegistered();
    QSvgRenderer renderer(path);
    if (!renderer.isValid() || size.isEmpty()) {
        return {};
    }
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

QIcon applicationIcon() {
    ensureRegistered();
    return QIcon(kApplicationIconArt);
}

}  // namespace nutrovex
