#include "base/SysInfoObject.h"
#include "base/SysInfo_p.h"

#include "base/Global.h"

#ifdef Q_OS_WIN
#include <psapi.h>
#include <windows.h>
#else
#include <ctime>
#include <sys/sysinfo.h>
#include <unistd.h>
#endif

namespace {

SysInfoObject* s_instance = nullptr;
const char kInstanceName[] = "___SysInfoObject___";

// The previous CPU samples, process-wide: counts of 100 ns.
quint64 s_previousNow = 0;
quint64 s_previousProcessKernel = 0;
quint64 s_previousProcessUser = 0;
SysInfoPrivate::SystemTimes s_previousSystem;

#ifdef Q_OS_WIN
typedef BOOL(WINAPI* GetSystemTimesFunction)(LPFILETIME, LPFILETIME, LPFILETIME);
HMODULE s_kernel32 = nullptr;
GetSystemTimesFunction s_getSystemTimes = nullptr;

quint64 toCount(const FILETIME& time)
{
    return (quint64(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}
#else
quint64 clockCount(clockid_t clock)
{
    timespec time {};
    if (clock_gettime(clock, &time) != 0)
        return 0;
    return quint64(time.tv_sec) * 10000000u + quint64(time.tv_nsec) / 100u;
}
#endif

// The wall clock and the process' kernel and user times (on Linux both in user, which is all the clock gives).
void sampleProcess(quintptr process, quint64& now, quint64& kernel, quint64& user)
{
#ifdef Q_OS_WIN
    FILETIME systemTime, creation, exit, kernelTime, userTime;
    GetSystemTimeAsFileTime(&systemTime);
    now = toCount(systemTime);
    kernel = user = 0;
    if (GetProcessTimes(reinterpret_cast<HANDLE>(process), &creation, &exit, &kernelTime, &userTime)) {
        kernel = toCount(kernelTime);
        user = toCount(userTime);
    }
#else
    Q_UNUSED(process)
    now = clockCount(CLOCK_MONOTONIC);
    kernel = 0;
    user = clockCount(CLOCK_PROCESS_CPUTIME_ID);
#endif
}

} // namespace

SysInfoObject* SysInfoObject::instance()
{
    if (s_instance)
        return s_instance;
    Global* global = Global::instance();
    s_instance = qobject_cast<SysInfoObject*>(global->getSelf(QLatin1String(kInstanceName)));
    if (!s_instance) {
        s_instance = new SysInfoObject(QLatin1String(kInstanceName));
        global->addSelf(s_instance);
    }
    return s_instance;
}

SysInfoObject::SysInfoObject(QString name)
{
    setObjectName(name);
#ifdef Q_OS_WIN
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    m_processors = int(info.dwNumberOfProcessors);
    m_process = reinterpret_cast<quintptr>(GetCurrentProcess());
    if (!s_kernel32) {
        s_kernel32 = LoadLibraryW(L"Kernel32.dll");
        if (s_kernel32) {
            s_getSystemTimes = reinterpret_cast<GetSystemTimesFunction>(GetProcAddress(s_kernel32, "GetSystemTimes"));
            if (!s_getSystemTimes) {
                FreeLibrary(s_kernel32);
                s_kernel32 = nullptr;
            }
        }
    }
#else
    const long processors = sysconf(_SC_NPROCESSORS_ONLN);
    m_processors = processors > 0 ? int(processors) : 1;
    m_process = quintptr(getpid());
#endif
    sampleProcess(m_process, s_previousNow, s_previousProcessKernel, s_previousProcessUser);
}

SysInfoObject::~SysInfoObject()
{
    m_values.clear();
    if (s_instance == this)
        s_instance = nullptr;
}

int SysInfoObject::cpuUsageProcess()
{
    quint64 now = 0;
    quint64 kernel = 0;
    quint64 user = 0;
    sampleProcess(m_process, now, kernel, user);
    const quint64 busy = (kernel + user) - (s_previousProcessKernel + s_previousProcessUser);
    const quint64 span = now - s_previousNow;
    s_previousNow = now;
    s_previousProcessKernel = kernel;
    s_previousProcessUser = user;
    return SysInfoPrivate::processLoad(busy, span);
}

int SysInfoObject::cpuUsage()
{
    SysInfoPrivate::SystemTimes current;
#ifdef Q_OS_WIN
    if (!s_getSystemTimes)
        return 0; // never call a missing entry point
    FILETIME idle, kernel, user;
    if (!s_getSystemTimes(&idle, &kernel, &user))
        return 0;
    current.idle = toCount(idle);
    current.kernel = toCount(kernel);
    current.user = toCount(user);
#else
    if (!SysInfoPrivate::readSystemTimes(QStringLiteral("/proc/stat"), current))
        return 0;
#endif
    const int load = SysInfoPrivate::systemLoad(s_previousSystem, current);
    s_previousSystem = current;
    return load;
}

quint32 SysInfoObject::getActualWorkingSetSizeKB()
{
#ifdef Q_OS_WIN
    PROCESS_MEMORY_COUNTERS counters;
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters)))
        return 0;
    return quint32(counters.WorkingSetSize >> 10);
#else
    return SysInfoPrivate::workingSetKB(QStringLiteral("/proc/self/statm"));
#endif
}

int SysInfoObject::getPhysicalMemMB(int& availableMB, int& totalMB)
{
    availableMB = 0;
    totalMB = 0;
#ifdef Q_OS_WIN
    PERFORMANCE_INFORMATION info;
    const BOOL ok = GetPerformanceInfo(&info, sizeof(info));
    if (!ok)
        return int(ok);
    totalMB = int((quint64(info.PhysicalTotal) * quint64(info.PageSize)) >> 20);
    availableMB = int((quint64(info.PhysicalAvailable) * quint64(info.PageSize)) >> 20);
#else
    struct sysinfo info
    {
    };
    if (sysinfo(&info) != 0)
        return 0;
    totalMB = int((quint64(info.totalram) * info.mem_unit) >> 20);
    // Free plus buffer memory: like the Windows figure, it counts memory the system can hand out at once.
    availableMB = int((quint64(info.freeram + info.bufferram) * info.mem_unit) >> 20);
#endif
    return availableMB;
}

void SysInfoObject::addCom(QString port)
{
    emit comAdded(port);
}

void SysInfoObject::removeCom(QString port)
{
    emit comRemoved(port);
}

void SysInfoObject::setRx(QString port, int a, int b)
{
    emit rxUpdate(port, a, b);
}
