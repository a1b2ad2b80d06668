#include "base/AppSettings.h"

#include "base/BasicTools.h"
#include "base/Global.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QWidgetAction>

namespace {

const QString kMainwindow = QStringLiteral("Mainwindow");

} // namespace

AppSettings::AppSettings()
    : QSettings(QSettings::IniFormat, QSettings::UserScope, Global::instance()->companyName(), Global::appName())
{
    setFallbacksEnabled(false);
}

QString AppSettings::homePath()
{
    QString fallback = fileName();
    fallback.remove(QStringLiteral(".ini"), Qt::CaseSensitive);
    const QString path = value(QStringLiteral("HomePath"), fallback).toString();
    // mkpath rather than mkdir: on a fresh installation not even the settings file's directory exists yet.
    QDir().mkpath(path);
    setValue(QStringLiteral("HomePath"), path);
    return path;
}

void AppSettings::savePos(QWidget* w, QString name)
{
    beginGroup(kMainwindow);
    setValue(QString(QLatin1String("isVisible") + name), w->isVisible());
    setValue(QString(QLatin1String("Maximized") + name), w->isMaximized());
    if (QMainWindow* mainWindow = qobject_cast<QMainWindow*>(w)) {
        setValue(QStringLiteral("WindowState"), mainWindow->saveState(version()));
        // Shown normal whatever its state was, so that the normal geometry below can be read.
        mainWindow->showNormal();
        QCoreApplication::processEvents();
    }
    if (!w->isMaximized() && !w->isMinimized()) {
        setValue(QString(QLatin1String("Size") + name), w->size());
        setValue(QString(QLatin1String("Position") + name), w->pos());
    }
    endGroup();
}

bool AppSettings::restorePos(QWidget* w, QString name)
{
    beginGroup(kMainwindow);
    const QString positionKey = QLatin1String("Position") + name;
    const bool stored = contains(positionKey);
    const QPoint position = value(positionKey, w->pos()).toPoint();
    const QSize size = value(QString(QLatin1String("Size") + name), w->size()).toSize();
    w->resize(size);
    const QList<QScreen*> screens = QGuiApplication::screens();
    if (QMainWindow* mainWindow = qobject_cast<QMainWindow*>(w)) {
        qDebug() << "bool AppSettings::restorePos(QWidget*, QString)" << screens.size();
        mainWindow->restoreState(value(QStringLiteral("WindowState")).toByteArray(), version());
    }
    if (screens.size() < 2) {
        // A single screen: a position off its available area (a screen that was unplugged) is not used.
        const QScreen* primary = QGuiApplication::primaryScreen();
        if (primary && primary->availableGeometry().contains(position))
            w->move(position);
    } else {
        w->move(position);
    }
    if (value(QString(QLatin1String("Maximized") + name), false).toBool())
        w->showMaximized();
    else if (value(QString(QLatin1String("isVisible") + name), false).toBool())
        w->showNormal();
    endGroup();
    return stored;
}

void AppSettings::saveParaMap(QMap<QString, QVariant> map, QString key)
{
    setValue(key, map);
}

QMap<QString, QVariant> AppSettings::getParaMap(QString key)
{
    return value(key).toMap();
}

void AppSettings::saveColorCustomMap(QMap<QString, QVariant> map, QString name)
{
    saveParaMap(map, QString(QLatin1String("ColorMap/") + name));
}

QMap<QString, QVariant> AppSettings::getColorCustomMap(QString name)
{
    return getParaMap(QString(QLatin1String("ColorMap/") + name));
}

void AppSettings::saveParaMapVariant(QMap<QString, QMap<QString, QVariant>> maps, QString prefix)
{
    if (!prefix.endsWith(QLatin1Char('/')))
        prefix += QLatin1Char('/');
    const QString group = prefix + QLatin1String("VariantMap/");
    remove(group);
    beginGroup(group);
    for (auto it = maps.constBegin(); it != maps.constEnd(); ++it)
        setValue(it.key(), it.value());
    endGroup();
}

QMap<QString, QMap<QString, QVariant>> AppSettings::getParaMapVariant(QString prefix)
{
    if (!prefix.endsWith(QLatin1Char('/')))
        prefix += QLatin1Char('/');
    QMap<QString, QMap<QString, QVariant>> maps;
    beginGroup(QString(prefix + QLatin1String("VariantMap/")));
    const QStringList names = childKeys();
    for (const QString& name : names)
        maps.insert(name, value(name).toMap());
    endGroup();
    return maps;
}

void AppSettings::saveComboxCurrentText(QComboBox* box)
{
    beginGroup(QStringLiteral("ComboBoxCurrentText"));
    setValue(box->objectName(), box->currentText());
    endGroup();
}

QString AppSettings::restoreComboBoxCurrentText(QComboBox* box)
{
    beginGroup(QStringLiteral("ComboBoxCurrentText"));
    const QString text = value(box->objectName()).toString();
    endGroup();
    return text;
}

void AppSettings::saveMenu(QMenu* menu)
{
    beginGroup(menu->objectName());
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        if (action->objectName().isEmpty())
            continue;
        if (action->menu())
            saveMenu(action->menu());
        else if (action->isCheckable())
            setValue(action->objectName(), action->isChecked());
    }
    endGroup();
}

void AppSettings::restoreMenu(QMenu* menu)
{
    beginGroup(menu->objectName());
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        if (action->objectName().isEmpty())
            continue;
        if (action->menu()) {
            restoreMenu(action->menu());
        } else if (action->isCheckable() && action->isEnabled()) {
            const bool stored = value(action->objectName(), action->isChecked()).toBool();
            // Set to the opposite and triggered, so that the action's handlers run as on a user's click.
            action->setChecked(!stored);
            action->activate(QAction::Trigger);
        }
    }
    endGroup();
}

void AppSettings::saveNotificationMap(QString name, QMap<QDateTime, QString>* map, QString message)
{
    if (!map)
        return;
    if (!message.isEmpty())
        map->insert(QDateTime::currentDateTime(), message);
    while (map->size() > maxNotifications())
        map->erase(map->begin());
    beginGroup(QStringLiteral("MessageMap"));
    remove(name);
    beginWriteArray(name, map->size());
    int index = 0;
    for (auto it = map->constBegin(); it != map->constEnd(); ++it, ++index) {
        setArrayIndex(index);
        setValue(QStringLiteral("time"), it.key());
        setValue(QStringLiteral("text"), it.value());
    }
    endArray();
    endGroup();
}

QMap<QDateTime, QString> AppSettings::restoreNotificationMap(QString name)
{
    QMap<QDateTime, QString> map;
    beginGroup(QStringLiteral("MessageMap"));
    const int size = beginReadArray(name);
    for (int index = 0; index < size; ++index) {
        setArrayIndex(index);
        const QDateTime time = value(QStringLiteral("time")).toDateTime();
        if (time.isValid())
            map.insert(time, value(QStringLiteral("text")).toString());
    }
    endArray();
    endGroup();
    return map;
}

QString AppSettings::menuInputParameter(QWidget* parent, QString key, QPoint pos, QMenu* extend)
{
    QMenu menu(parent);
    auto* edit = new QLineEdit(value(key).toString());
    auto* editAction = new QWidgetAction(&menu);
    editAction->setDefaultWidget(edit); // the action owns the line edit
    menu.addAction(editAction);
    if (extend) {
        menu.addSeparator();
        menu.addActions(extend->actions());
    }
    QObject::connect(edit, &QLineEdit::returnPressed, &menu, [this, &menu, edit, &key]() {
        setValue(key, edit->text());
        menu.close();
    });
    menu.exec(pos);
    return value(key).toString();
}

QString Prefix::add(QString s, int n)
{
    return QString(BasicTools::iToInt(n, 4, QString(), '0') + s);
}

QString Prefix::x(QString s)
{
    return s.mid(4);
}
