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
    void prefix();
    void paraMaps();
    void menuRestoreTriggersOnce();
    void savePosMaximizedMainWindow();
    void restorePos();
    void menuInputParameter();
    void notificationMap();

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
    QCOMPARE(AppSettings().value("HomePath").toString(), expected);
}

void TestAppSettings::prefix()
{
    QCOMPARE(Prefix::add("name", 3), "0003name");
    QCOMPARE(Prefix::add("abc", 12345), "12345abc");
    QCOMPARE(Prefix::x("0003name"), "name");
    QCOMPARE(Prefix::x("ab"), QString());
}

void TestAppSettings::paraMaps()
{
    const QMap<QString, QVariant> map {{"gain", 3}, {"unit", "mm"}};
    AppSettings().saveParaMap(map, "Plugin/params");
    AppSettings().saveColorCustomMap(map, "graph");
    AppSettings settings;
    QCOMPARE(settings.getParaMap("Plugin/params"), map);
    QCOMPARE(settings.value("ColorMap/graph").toMap(), map);
    QCOMPARE(settings.getColorCustomMap("graph"), map);
    QVERIFY(settings.getParaMap("missing").isEmpty());
    QComboBox box;
    box.setObjectName("unit");
    box.addItem("mm");
    settings.saveComboxCurrentText(&box);
    QCOMPARE(AppSettings().restoreComboBoxCurrentText(&box), "mm");

    // Each save replaces what was stored under the prefix, with or without its slash.
    const QMap<QString, QVariant> c {{"y", "two"}};
    for (const QString prefix : {"Plug", "Plug/"}) {
        settings.saveParaMapVariant({{"a", map}, {"b", map}}, prefix);
        QCOMPARE(settings.value("Plug/VariantMap/b").toMap(), map);
        settings.saveParaMapVariant({{"c", c}}, prefix);
        QCOMPARE(settings.getParaMapVariant(prefix), (QMap<QString, QMap<QString, QVariant>> {{"c", c}}));
        QVERIFY(!settings.contains("Plug/VariantMap/a"));
    }
}

void TestAppSettings::menuRestoreTriggersOnce()
{
    QMenu menu;
    menu.setObjectName("viewMenu");
    const auto checkable = [](QMenu* owner, const QString& name, bool checked) {
        QAction* action = owner->addAction(name);
        action->setObjectName(name);
        action->setCheckable(true);
        action->setChecked(checked);
        return action;
    };
    QAction* grid = checkable(&menu, "showGrid", true);
    QAction* axes = checkable(&menu, "showAxes", false);
    QAction* locked = checkable(&menu, "locked", true);
    menu.addAction("about")->setObjectName("about"); // not checkable: not stored
    QMenu* sub = menu.addMenu("More");
    sub->setObjectName("subMenu");
    sub->menuAction()->setObjectName("subMenuAction");
    QAction* deep = checkable(sub, "deep", true);
    AppSettings().saveMenu(&menu);
    AppSettings settings;
    QCOMPARE(settings.value("viewMenu/subMenu/deep"), QVariant(true));
    settings.beginGroup("viewMenu");
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
    settings.savePos(&window, "Main");
    QVERIFY(!window.isMaximized());
    QCOMPARE(settings.value("Mainwindow/MaximizedMain"), QVariant(true));
    QCOMPARE(settings.value("Mainwindow/isVisibleMain"), QVariant(true));
    QVERIFY(!settings.value("Mainwindow/WindowState").toByteArray().isEmpty());
    QCOMPARE(settings.value("Mainwindow/SizeMain").toSize(), window.size());
    QCOMPARE(settings.value("Mainwindow/PositionMain").toPoint(), window.pos());
}

void TestAppSettings::restorePos()
{
    const QPoint inside = QGuiApplication::primaryScreen()->availableGeometry().topLeft() + QPoint(20, 30);
    AppSettings settings;
    settings.beginGroup("Mainwindow");
    settings.setValue("SizeMain", QSize(320, 240));
    settings.setValue("PositionMain", inside);
    settings.setValue("SizeFar", QSize(100, 90));
    settings.setValue("PositionFar", QPoint(-50000, -50000));
    QMainWindow window;
    LogCapture log;
    QVERIFY(AppSettings().restorePos(&window, "Main"));
    QCOMPARE(window.size(), QSize(320, 240));
    QCOMPARE(window.pos(), inside);
    QVERIFY(!window.isVisible()); // stored as neither visible nor maximised
    QCOMPARE(log.texts(), QStringList("bool AppSettings::restorePos(QWidget*, QString) 1"));

    QWidget far;
    far.move(inside);
    log.clear();
    QVERIFY(AppSettings().restorePos(&far, "Far"));
    QCOMPARE(far.size(), QSize(100, 90));
    QCOMPARE(far.pos(), inside); // off the only screen: not used
    QVERIFY(log.texts().isEmpty());

    QWidget unknown;
    unknown.resize(50, 40);
    QVERIFY(!AppSettings().restorePos(&unknown, "Unknown"));
    QCOMPARE(unknown.size(), QSize(50, 40));
}

void TestAppSettings::menuInputParameter()
{
    AppSettings().setValue("Gain", "3");
    QMenu extend;
    extend.addAction("extra");
    // Return in the line edit stores its text and closes the menu; the menu shows the stored value first.
    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        auto* edit = menu ? menu->findChild<QLineEdit*>() : nullptr;
        if (edit && edit->text() == "3" && menu->actions().size() == 3) // the edit, a separator, "extra"
            edit->setText("42");
        if (edit)
            QTest::keyClick(edit, Qt::Key_Return);
        else if (menu)
            menu->close(); // a menu without its edit fails the comparison instead of waiting forever
    });
    QCOMPARE(AppSettings().menuInputParameter(nullptr, "Gain", QPoint(10, 10), &extend), "42");
}

void TestAppSettings::notificationMap()
{
    QMap<QDateTime, QString> map;
    map.insert(QDateTime(QDate(2024, 3, 1), QTime(10, 0, 0, 5)), "first");
    map.insert(QDateTime(QDate(2024, 3, 2), QTime(11, 30)), "second");
    AppSettings().saveNotificationMap("warnings", &map, "third");
    QCOMPARE(map.size(), 3);
    QCOMPARE(map.last(), "third");
    QCOMPARE(AppSettings().restoreNotificationMap("warnings"), map);
    QVERIFY(AppSettings().childGroups().contains("MessageMap"));
    map.remove(map.firstKey());
    AppSettings().saveNotificationMap("warnings", &map, QString());
    AppSettings().saveNotificationMap("warnings", nullptr, "ignored");
    QCOMPARE(AppSettings().restoreNotificationMap("warnings"), map);
    QVERIFY(AppSettings().restoreNotificationMap("other").isEmpty());

    // Only the newest are kept.
    map.clear();
    for (int i = 0; i < AppSettings::maxNotifications() + 5; ++i)
        map.insert(QDateTime(QDate(2024, 1, 1), QTime(0, 0)).addSecs(i), QString::number(i));
    AppSettings().saveNotificationMap("log", &map, QString());
    QCOMPARE(map.size(), AppSettings::maxNotifications());
    QCOMPARE(map.first(), "5");
    QCOMPARE(AppSettings().restoreNotificationMap("log"), map);
}

QTEST_MAIN(TestAppSettings)

#include "tst_appsettings.moc"
