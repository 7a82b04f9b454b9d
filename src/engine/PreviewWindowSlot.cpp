#include "engine/PreviewWindowSlot.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

const QByteArray kCloseRequest = "close\n";

} // namespace

PreviewWindowSlot::PreviewWindowSlot(const QString& layoutPath, QObject* parent)
    : QObject(parent), m_name(serverName(layoutPath))
{
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (!socket->readAll().contains(kCloseRequest.trimmed()))
                    return;
                // The window closes (and saves what it keeps) first; the dropped connection then
                // tells the newer preview that the name is free.
                emit closeRequested();
                m_server.close();
                socket->disconnectFromServer();
            });
        }
    });
}

QString PreviewWindowSlot::serverName(const QString& layoutPath)
{
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = qEnvironmentVariable("USERNAME");
    QString form = QFileInfo(layoutPath).absoluteFilePath();
#ifdef Q_OS_WIN
    form = form.toLower(); // the same file under any spelling
#endif
    const QByteArray key =
        QCryptographicHash::hash((user + u'\n' + QDir::cleanPath(form)).toUtf8(), QCryptographicHash::Sha1)
            .toHex()
            .left(20);
    return u"qelprn-preview-"_s + QString::fromLatin1(key);
}

bool PreviewWindowSlot::claim(int waitMs)
{
    QLocalSocket older;
    older.connectToServer(m_name);
    if (older.waitForConnected(qMin(waitMs, 500))) {
        older.write(kCloseRequest);
        older.flush();
        // The older preview drops the connection when it ends. Events keep flowing meanwhile, so
        // an older preview in this same process (tests) can answer too.
        const QDeadlineTimer deadline(waitMs);
        while (older.state() != QLocalSocket::UnconnectedState && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            older.waitForDisconnected(20);
        }
    }
    older.abort();
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (m_server.listen(m_name))
        return true;
    // A name left behind by a preview that ended without closing, or one that did not go in time.
    QLocalServer::removeServer(m_name);
    return m_server.listen(m_name);
}

} // namespace qelprn::engine
