#include "ui/QtText.h"

#include <QFile>
#include <QStringDecoder>

namespace zu {

QString FromState(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

std::string ToState(const QString& text) {
    return text.toLatin1().toStdString();
}

QString FromMessage(std::string_view text) {
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = decoder(bytes);
    return decoder.hasError() ? FromState(text) : decoded;
}

QString FromPath(std::string_view path) {
    return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

std::string ToPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace zu
