#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Zerbu"));
    QApplication::setApplicationName(QStringLiteral("Nutrovex"));
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Nutrovex"));
    window.resize(360, 640);
    window.show();
    return QApplication::exec();
}
