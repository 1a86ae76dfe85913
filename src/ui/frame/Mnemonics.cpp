#include "ui/frame/Mnemonics.h"

namespace nutrovex {

QString withMnemonic(const QString& text, QString& used) {
    if (text.contains(u'&')) {
        return text;
    }
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i).toLower();
        if (c.isLetterOrNumber() && !used.contains(c)) {
            used.append(c);
            QString out = text;
            out.insert(i, u'&');
            return out;
        }
    }
    return text;
}

}  // namespace nutrovex
