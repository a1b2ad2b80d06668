#include "LogCapture.h"

#include "base/AppSettings.h"
#include "base/Global.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

class TestAppSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void homePathCreatedAndWrittenBack();
    void prefix_data();
    void prefix();
    void paraMaps();
    void paraMapVariantReplaces_data();
    void paraMapVariantReplaces();
    void menuRestoreTriggersOnce();
    void savePosMaximizedMainWindow();
    void restorePos();
    void notificationMap();
    void notificationMapDropsOldest();

private:
    QTemporaryDir m_home;
    QString m_config;
};

void TestAppSettings::initTestCase()
{
    QVERIFY(m_home.isValid());
    // Never touch the user's own settings or home.
    qputenv("HOME", m_home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", QString(m_home.path() + QLatin1String("/xdg")).toLocal8Bit());
    QStandardPaths::setTestModeEnabled(true);
    m_config = m_home.path() + QLatin1String("/config");
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_config);
    Global::instance();
}

void TestAppSettings::init()
{
    AppSettings settings;
    settings.clear();
}

void TestAppSettings::homePathCreatedAndWrittenBack()
{
    const QString expected = m_config + QLatin1String("/Kivotronic/") + qAppName();
    QDir(expected).removeRecursively();
    QCOMPARE(AppSettings().homePath(), expected);
    QVERIFY(QFileInfo(expected).isDir());
    QCOMPARE(AppSettings().value(QStringLiteral("HomePath")).toString(), expected);
}

void TestAppSettings::prefix_data()
{
    QTest::addColumn<QString>("s");
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("added");
    QTest::newRow("three") << "name" << 3 << "0003name";
    QTest::newRow("zero") << "abc" << 0 << "0000abc";
    QTest::newRow("twelve") << "abc" << 12 << "0012abc";
    QTest::newRow("four digits") << "abc" << 9999 << "9999abc";
    QTest::newRow("not truncated") << "abc" << 12345 << "12345abc";
}

void TestAppSettings::prefix()
{
    QFETCH(QString, s);
    QFETCH(int, n);
    QFETCH(QString, added);
    QCOMPARE(Prefix::add(s, n), added);
    if (n < 10000)
        QCOMPARE(Prefix::x(added), s);
    QCOMPARE(Prefix::x(QStringLiteral("ab")), QString());
}

void TestAppSettings::paraMaps()
{
    const QMap<QString, QVariant> map {{QStringLiteral("gain"), 3}, {QStringLiteral("unit"), QStringLiteral("mm")}};
    {
        AppSettings settings;
        settings.saveParaMap(map, QStringLiteral("Plugin/params"));
        settings.saveColorCustomMap(map, QStringLiteral("graph"));
    }
    AppSettings settings;
    QCOMPARE(settings.getParaMap(QStringLiteral("Plugin/params")), map);
    QCOMPARE(settings.value(QStringLiteral("ColorMap/graph")).toMap(), map);
    QCOMPARE(settings.getColorCustomMap(QStringLiteral("graph")), map);
    QVERIFY(settings.getParaMap(QStringLiteral("missing")).isEmpty());
}

void TestAppSettings::paraMapVariantReplaces_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::newRow("without slash") << "Plug";
    QTest::newRow("with slash") << "Plug/";
}

void TestAppSettings::paraMapVariantReplaces()
{
    QFETCH(QString, prefix);
    const QMap<QString, QVariant> a {{QStringLiteral("x"), 1}};
    const QMap<QString, QVariant> c {{QStringLiteral("y"), QStringLiteral("two")}};
    AppSettings settings;
    settings.saveParaMapVariant({{QStringLiteral("a"), a}, {QStringLiteral("b"), a}}, prefix);
    QCOMPARE(settings.value(QStringLiteral("Plug/VariantMap/b")).toMap(), a);
    settings.saveParaMapVariant({{QStringLiteral("c"), c}}, prefix);
    const QMap<QString, QMap<QString, QVariant>> expected {{QStringLiteral("c"), c}};
    QCOMPARE(settings.getParaMapVariant(QStringLiteral("Plug")), expected);
    QVERIFY(!settings.contains(QStringLiteral("Plug/VariantMap/a")));
}

void TestAppSettings::menuRestoreTriggersOnce()
{
    QMenu menu;
    menu.setObjectName(QStringLiteral("viewMenu"));
    const auto checkable = [](QMenu* owner, const QString& name, bool checked) {
        QAction* action = owner->addAction(name);
        action->setObjectName(name);
        action->setCheckable(true);
        action->setChecked(checked);
        return action;
    };
    QAction* grid = checkable(&menu, QStringLiteral("showGrid"), true);
    QAction* axes = checkable(&menu, QStringLiteral("showAxes"), false);
    QAction* locked = checkable(&menu, QStringLiteral("locked"), true);
    menu.addAction(QStringLiteral("about"))->setObjectName(QStringLiteral("about")); // not checkable: not stored
    QMenu* sub = menu.addMenu(QStringLiteral("More"));
    sub->setObjectName(QStringLiteral("subMenu"));
    sub->menuAction()->setObjectName(QStringLiteral("subMenuAction"));
    QAction* deep = checkable(sub, QStringLiteral("deep"), true);
    AppSettings().saveMenu(&menu);
    AppSettings settings;
    QCOMPARE(settings.value(QStringLiteral("viewMenu/subMenu/deep")), QVariant(true));
    settings.beginGroup(QStringLiteral("viewMenu"));
    QCOMPARE(settings.childKeys(), QStringList({"locked", "showAxes", "showGrid"}));

    grid->setChecked(false);
    deep->setChecked(false);
    locked->setChecked(false);
    locked->setEnabled(false); // a disabled action is left alone
    QSignalSpy gridSpy(grid, &QAction::triggered);
    QSignalSpy axesSpy(axes, &QAction::triggered);
    QSignalSpy lockedSpy(locked, &QAction::triggered);
    AppSettings().restoreMenu(&menu);
    QCOMPARE(gridSpy.count(), 1);
    QVERIFY(grid->isChecked() && deep->isChecked() && !locked->isChecked());
    QCOMPARE(axesSpy.count(), 1); // also when the state already matched
    QVERIFY(!axes->isChecked());
    QCOMPARE(lockedSpy.count(), 0);
}

void TestAppSettings::savePosMaximizedMainWindow()
{
    QMainWindow window;
    window.resize(300, 200);
    window.showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.isMaximized());
    AppSettings settings;
    settings.savePos(&window, QStringLiteral("Main"));
    QVERIFY(!window.isMaximized());
    QCOMPARE(settings.value(QStringLiteral("Mainwindow/MaximizedMain")), QVariant(true));
    QCOMPARE(settings.value(QStringLiteral("Mainwindow/isVisibleMain")), QVariant(true));
    QVERIFY(!settings.value(QStringLiteral("Mainwindow/WindowState")).toByteArray().isEmpty());
    QCOMPARE(settings.value(QStringLiteral("Mainwindow/SizeMain")).toSize(), window.size());
    QCOMPARE(settings.value(QStringLiteral("Mainwindow/PositionMain")).toPoint(), window.pos());
}

void TestAppSettings::restorePos()
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint inside = available.topLeft() + QPoint(20, 30);
    {
        AppSettings settings;
        settings.beginGroup(QStringLiteral("Mainwindow"));
        settings.setValue(QStringLiteral("SizeMain"), QSize(320, 240));
        settings.setValue(QStringLiteral("PositionMain"), inside);
        settings.setValue(QStringLiteral("SizeFar"), QSize(100, 90));
        settings.setValue(QStringLiteral("PositionFar"), QPoint(-50000, -50000));
    }
    QMainWindow window;
    LogCapture log;
    QVERIFY(AppSettings().restorePos(&window, QStringLiteral("Main")));
    QCOMPARE(window.size(), QSize(320, 240));
    QCOMPARE(window.pos(), inside);
    QVERIFY(!window.isVisible()); // stored as neither visible nor maximised
    QCOMPARE(log.texts(), QStringList(QStringLiteral("bool AppSettings::restorePos(QWidget*, QString) 1")));

    QWidget far;
    far.move(inside);
    log.clear();
    QVERIFY(AppSettings().restorePos(&far, QStringLiteral("Far")));
    QCOMPARE(far.size(), QSize(100, 90));
    QCOMPARE(far.pos(), inside); // off the only screen: not used
    QVERIFY(log.texts().isEmpty());

    QWidget unknown;
    unknown.resize(50, 40);
    QVERIFY(!AppSettings().restorePos(&unknown, QStringLiteral("Unknown")));
    QCOMPARE(unknown.size(), QSize(50, 40));
}

void TestAppSettings::notificationMap()
{
    QMap<QDateTime, QString> map;
    map.insert(QDateTime(QDate(2024, 3, 1), QTime(10, 0, 0, 5)), QStringLiteral("first"));
    map.insert(QDateTime(QDate(2024, 3, 2), QTime(11, 30)), QStringLiteral("second"));
    AppSettings().saveNotificationMap(QStringLiteral("warnings"), &map, QStringLiteral("third"));
    QCOMPARE(map.size(), 3);
    QCOMPARE(map.last(), QStringLiteral("third"));
    QCOMPARE(AppSettings().restoreNotificationMap(QStringLiteral("warnings")), map);
    QVERIFY(AppSettings().childGroups().contains(QStringLiteral("MessageMap")));

    map.remove(map.firstKey());
    AppSettings().saveNotificationMap(QStringLiteral("warnings"), &map, QString());
    QCOMPARE(AppSettings().restoreNotificationMap(QStringLiteral("warnings")), map);
    QVERIFY(AppSettings().restoreNotificationMap(QStringLiteral("other")).isEmpty());
    AppSettings().saveNotificationMap(QStringLiteral("warnings"), nullptr, QStringLiteral("ignored"));
    QCOMPARE(AppSettings().restoreNotificationMap(QStringLiteral("warnings")), map);
}

void TestAppSettings::notificationMapDropsOldest()
{
    QMap<QDateTime, QString> map;
    const QDateTime start(QDate(2024, 1, 1), QTime(0, 0));
    for (int i = 0; i < AppSettings::maxNotifications() + 5; ++i)
        map.insert(start.addSecs(i), QString::number(i));
    AppSettings().saveNotificationMap(QStringLiteral("log"), &map, QString());
    QCOMPARE(map.size(), AppSettings::maxNotifications());
    QCOMPARE(map.first(), QStringLiteral("5"));
    QCOMPARE(AppSettings().restoreNotificationMap(QStringLiteral("log")), map);
}

QTEST_MAIN(TestAppSettings)

#include "tst_appsettings.moc"
