#pragma once

#include "kivcore_export.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

/// Measures the processor load and the memory of the process, and relays serial-port events as signals so
/// that any part of the application can connect to one place. A singleton registered as
/// "___SysInfoObject___"; the CPU samples are process-wide, so call the load functions from one thread.
class KIVCORE_EXPORT SysInfoObject : public QObject
{
    Q_OBJECT

public:
    /// The registered object, created and registered on first use; never deleted.
    static SysInfoObject* instance();

    explicit SysInfoObject(QString name);
    ~SysInfoObject() override;

    /// Load of the whole system in percent since the previous call (the first call: since system start).
    int cpuUsage();
    /// Load caused by this process in percent of one processor since the previous call: deliberately not
    /// divided by the number of processors, so it can reach n x 100 on n processors.
    int cpuUsageProcess();
    /// The working set (resident memory) in KB; 0 when it cannot be read.
    static quint32 getActualWorkingSetSizeKB();
    /// Sets both to the available and total physical memory in MB and returns availableMB; 0 and 0 when
    /// unknown.
    static int getPhysicalMemMB(int& availableMB, int& totalMB);

public slots:
    void addCom(QString port);
    void removeCom(QString port);
    void setRx(QString port, int a, int b);

signals:
    void comAdded(QString);
    void comRemoved(QString);
    void rxUpdate(QString, int, int);

private:
    QMap<QString, QVariant> m_values; // for the application's use; only cleared on destruction
    int m_processors = 1;
    quintptr m_process = 0;
};
