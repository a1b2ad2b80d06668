#include "LogCapture.h"

namespace {
thread_local LogCapture* g_current = nullptr;
}

LogCapture::LogCapture()
    : m_outer(g_current)
{
    g_current = this;
    m_previous = qInstallMessageHandler(&LogCapture::handler);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
    g_current = m_outer;
}

QStringList LogCapture::texts() const
{
    QStringList list;
    list.reserve(m_messages.size());
    for (const Message& message : m_messages)
        list << message.text;
    return list;
}

QStringList LogCapture::matching(const QString& needle) const
{
    QStringList list;
    for (const Message& message : m_messages) {
        if (message.text.contains(needle))
            list << message.text;
    }
    return list;
}

void LogCapture::handler(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (g_current)
        g_current->m_messages.append({type, QString::fromLatin1(context.category ? context.category : ""), text});
}
