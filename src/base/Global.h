#pragma once

#include "kivcore_export.h"

#include <QMap>
#include <QObject>
#include <QString>

/// Process-wide registry of the library: the application and company names, a directory of named singleton
/// objects (not owned) and a directory of thread names for log labels. Created lazily by instance() and kept
/// until the process ends; the application may make its main window the registry's parent.
class KIVCORE_EXPORT Global : public QObject
{
    Q_OBJECT

public:
    ~Global() override;

    /// Creates the registry on the first call; later calls ignore `internal` and return the same object.
    static Global* instance(bool internal = false);
    /// The registry's parent. A non-null `name` is searched for below it and the result dropped, and the
    /// first argument is ignored: both kept as they are because existing callers pass them.
    static QObject* mainWindow(QObject* unused = nullptr, QString name = QString());
    /// The application name fixed by instance() (with "_2nd", "_3rd"... for further running copies); `count`
    /// receives the number of running copies seen at that time.
    static QString appName(int* count = nullptr);
    QString companyName() const;
    static void setCompanyName(const QString& name);
    /// True from 1 December to 6 January.
    static bool isSanta();
    bool internal() const;

    /// Registers `obj` under its object name; the first registration of a name wins. Does not take ownership.
    void addSelf(QObject* obj);
    QObject* getSelf(QString name);

    void registerThread(void* id, QString name);
    void unregisterThread(void* id);
    /// " #<hex id>(<name>)", padded to the widest label returned so far so that log columns line up.
    QString threadName(void* id);

private:
    Global();

    QMap<QString, QObject*> m_objects;
    QMap<Qt::HANDLE, QString> m_threads;
    bool m_internal = false;
};
