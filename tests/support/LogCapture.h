#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Captures every Qt log message while it lives, so tests can assert the exact texts the library writes.
/// Captures nest: the previous handler is restored on destruction.
class LogCapture
{
public:
    struct Message
    {
        QtMsgType type;
        QString category;
        QString text;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    const QList<Message>& messages() const { return m_messages; }
    /// The texts only, in order.
    QStringList texts() const;
    /// Texts of messages whose text contains `needle`.
    QStringList matching(const QString& needle) const;
    void clear() { m_messages.clear(); }

private:
    static void handler(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QList<Message> m_messages;
    QtMessageHandler m_previous = nullptr;
    LogCapture* m_outer = nullptr;
};
