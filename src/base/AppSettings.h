#pragma once

#include "kivcore_export.h"

#include <QDateTime>
#include <QMap>
#include <QPoint>
#include <QSettings>
#include <QString>
#include <QVariant>

class QComboBox;
class QMenu;
class QWidget;

/// The application's user settings: an INI file in the user scope named after the company and the
/// application (a second running copy has its own file). Create one on the stack wherever a setting is read
/// or written; several may be open at once.
class KIVCORE_EXPORT AppSettings : public QSettings
{
    Q_OBJECT

public:
    AppSettings();

    // Key names kept for the application's own settings; the library only reads keyStartCounter.
    static constexpr const char* keyStyleAppeal = "Style/appeal";
    static constexpr const char* keyAddFontPointSizeF = "Mainwindow/addFontPointSizeF";
    static constexpr const char* keyPluginsGeometry = "Plugins Geometry";
    static constexpr const char* keySessionsToolbars = "Sessions/Toolbars/VariantMap";
    static constexpr const char* keyMyPath = "MyPath";
    static constexpr const char* keyDebugFile = "DebugFile";
    static constexpr const char* keyColorMapCount = "ColorMap/Count";
    static constexpr const char* keyColorMapCheckedButton = "ColorMap/CheckedButton";
    static constexpr const char* keyGraphParam = "GraphParam/";
    static constexpr const char* keyStartCounter = "StartCounter";

    /// Version passed to QMainWindow::saveState and restoreState.
    int version() const { return 20; }

    /// The user's directory for data and logs ("HomePath", by default beside the settings file); created
    /// when missing and written back.
    QString homePath();

    /// Visibility, maximised state and normal geometry in group "Mainwindow". Shows a main window normal.
    void savePos(QWidget* w, QString name);
    /// True when a geometry had been stored for `name`.
    bool restorePos(QWidget* w, QString name);

    void saveParaMap(QMap<QString, QVariant> map, QString key);
    QMap<QString, QVariant> getParaMap(QString key);
    void saveColorCustomMap(QMap<QString, QVariant> map, QString name);
    QMap<QString, QVariant> getColorCustomMap(QString name);
    /// Replaces everything under prefix + "VariantMap/" with one entry per named map.
    void saveParaMapVariant(QMap<QString, QMap<QString, QVariant>> maps, QString prefix);
    QMap<QString, QMap<QString, QVariant>> getParaMapVariant(QString prefix);

    void saveComboxCurrentText(QComboBox* box);
    /// The stored text; the caller applies it.
    QString restoreComboBoxCurrentText(QComboBox* box);

    /// Checked states of the menu's checkable actions, in a group named after the menu (sub-menus nested).
    void saveMenu(QMenu* menu);
    /// Triggers every checkable, enabled action once so that it ends in its stored state and its signals
    /// fire as if the user had clicked it, also when the state already matches.
    void restoreMenu(QMenu* menu);

    /// Stores the time-stamped messages of list `name` in group "MessageMap". A non-empty `message` is first
    /// added to `map` with the current time; only the newest maxNotifications() entries are kept, in `map`
    /// and in the store.
    void saveNotificationMap(QString name, QMap<QDateTime, QString>* map, QString message);
    QMap<QDateTime, QString> restoreNotificationMap(QString name);
    static int maxNotifications() { return 100; }

    /// Context menu at `pos` (global) with a line edit holding the value stored under `key`; the actions of
    /// `extend`, if given, are shown below it. Return in the line edit stores the text and closes the menu.
    /// Returns the value stored under `key` afterwards.
    QString menuInputParameter(QWidget* parent, QString key, QPoint pos, QMenu* extend);
};

/// A four-digit ordering prefix on settings keys.
class KIVCORE_EXPORT Prefix
{
public:
    Prefix() = delete;

    /// "0003name" for n = 3; more digits are kept whole.
    static QString add(QString s, int n);
    /// s without its first 4 characters.
    static QString x(QString s);
};
