#include "base/Global.h"
#include "base/Global_p.h"

#include "base/BasicTools.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace {

Global* s_instance = nullptr;
QString s_appName;
QString s_companyName = QStringLiteral("Kivotronic");
int s_instanceCount = 1;
bool s_internal = false;
int s_widestLabel = 0;

const char kInstanceName[] = "___GlobalInstance___";

int countRunningCopies(const QString& appName)
{
    const QString image = GlobalPrivate::imageName(appName);
#ifdef Q_OS_WIN
    QProcess process;
    process.start(QStringLiteral("wmic.exe process get caption"), QIODevice::ReadWrite);
    process.waitForStarted(30000);
    process.waitForFinished(30000);
    return GlobalPrivate::countInCaptionListing(process.readAllStandardOutput(), image);
#else
    return GlobalPrivate::countInProcRoot(QStringLiteral("/proc"), image);
#endif
}

#ifndef Q_OS_WIN
QString readLinkBaseName(const QString& path)
{
    const QByteArray local = QFile::encodeName(path);
    char buffer[4096];
    const ssize_t length = ::readlink(local.constData(), buffer, sizeof(buffer) - 1);
    if (length <= 0)
        return QString();
    const QString target = QFile::decodeName(QByteArray(buffer, int(length)));
    return target.mid(target.lastIndexOf(QLatin1Char('/')) + 1);
}
#endif

} // namespace

QString GlobalPrivate::imageName(const QString& appName)
{
#ifdef Q_OS_WIN
    return QString(appName + QLatin1String(".exe"));
#else
    return appName;
#endif
}

int GlobalPrivate::countInCaptionListing(const QByteArray& listing, const QString& image)
{
    int end = listing.indexOf('\0');
    if (end < 0)
        end = listing.size();
    QString text = QString::fromLatin1(listing.constData(), end);
    // Removing the line breaks without a separator is deliberate: every line is padded with blanks.
    text.remove(QLatin1Char('\n'));
    text.remove(QLatin1Char('\r'));
    const QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts, Qt::CaseSensitive);
    return parts.count(image);
}

int GlobalPrivate::countInProcRoot(const QString& procRoot, const QString& image)
{
#ifdef Q_OS_WIN
    Q_UNUSED(procRoot)
    Q_UNUSED(image)
    return 0;
#else
    const QDir root(procRoot);
    const QStringList entries = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    int count = 0;
    for (const QString& entry : entries) {
        bool isPid = false;
        entry.toULongLong(&isPid);
        if (!isPid)
            continue;
        const QString dir = root.filePath(entry);
        // The link names the whole executable; "comm" is cut to 15 characters but readable for every user.
        QString name = readLinkBaseName(dir + QLatin1String("/exe"));
        if (name.isEmpty()) {
            QFile comm(dir + QLatin1String("/comm"));
            if (comm.open(QIODevice::ReadOnly))
                name = QString::fromLocal8Bit(comm.readAll()).trimmed();
        }
        if (name == image)
            ++count;
    }
    return count;
#endif
}

QString GlobalPrivate::nameForCount(const QString& appName, int count)
{
    if (count <= 1)
        return appName;
    // itoOrdinal names n + 1: the second copy (count 2) becomes "_2nd".
    return QString(appName + QLatin1Char('_') + BasicTools::itoOrdinal(quint32(count - 1)));
}

bool GlobalPrivate::isSantaDate(const QDate& date)
{
    return date.month() == 12 || (date.month() == 1 && date.day() <= 6);
}

Global::Global()
{ }

Global::~Global()
{
    if (s_instance == this)
        s_instance = nullptr;
}

Global* Global::instance(bool internal)
{
    if (s_instance)
        return s_instance;
    s_instance = new Global;
    s_instance->setObjectName(QLatin1String(kInstanceName));
    s_appName = qAppName();
    s_companyName = QStringLiteral("Kivotronic");
    s_internal = internal;
    s_instanceCount = countRunningCopies(s_appName);
    s_appName = GlobalPrivate::nameForCount(s_appName, s_instanceCount);
    return s_instance;
}

QObject* Global::mainWindow(QObject* unused, QString name)
{
    Q_UNUSED(unused)
    QObject* parent = s_instance ? s_instance->parent() : nullptr;
    if (parent && !name.isNull())
        parent->findChild<QObject*>(name); // result deliberately unused, see the header
    return parent;
}

QString Global::appName(int* count)
{
    if (count)
        *count = s_instanceCount;
    return s_appName;
}

QString Global::companyName() const
{
    return s_companyName;
}

void Global::setCompanyName(const QString& name)
{
    s_companyName = name;
}

bool Global::isSanta()
{
    return GlobalPrivate::isSantaDate(QDate::currentDate());
}

bool Global::internal() const
{
    return s_internal;
}

void Global::addSelf(QObject* obj)
{
    const QString name = obj->objectName();
    const auto it = m_objects.constFind(name);
    if (it == m_objects.constEnd()) {
        m_objects.insert(name, obj);
        return;
    }
    qCritical() << "void Global::addSelf(QObject*)" << obj << it.value();
}

QObject* Global::getSelf(QString name)
{
    return m_objects.value(name, nullptr);
}

void Global::registerThread(void* id, QString name)
{
    m_threads.insert(id, name);
}

void Global::unregisterThread(void* id)
{
    if (m_threads.remove(id) == 0)
        qWarning() << "void Global::unregisterThread(Qt::HANDLE)"
                   << "id not found";
}

QString Global::threadName(void* id)
{
    QString text = BasicTools::iToHex(quint64(quintptr(id)), 5, QStringLiteral(" #"));
    text += QLatin1Char('(') + m_threads.value(id) + QLatin1Char(')');
    if (text.size() > s_widestLabel) {
        s_widestLabel = text.size();
        return text;
    }
    return text.leftJustified(s_widestLabel, QLatin1Char(' '));
}
