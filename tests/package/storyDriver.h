#pragma once

#include <QGenericPlugin>

/// A plugin that works a program as its user would, for programs that are tested as they are delivered: Qt
/// loads it into any program of its own where the environment says so (QT_PLUGIN_PATH,
/// QT_QPA_GENERIC_PLUGINS=story), and it follows the story in the file that SHOP_STORY names. A line is a
/// step; each waits until it can be done, and leaves the file then where that may be written:
///
///   in NAME              the window that the next steps are about
///   choose ACTION        triggers a menu action
///   click BUTTON
///   type BOX TEXT        types into a box in place of what it holds
///   enter BOX            presses the return key in a box
///   read BOX TEXT        waits until a box or a label shows the text
///   shoot FILE           saves a picture of the window
///   answer TEXT          presses the default button of a message box whose text begins so
///
/// A step that cannot be done within a minute is told, and ends the program with code 3.
class StoryPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "story.json")

public:
    QObject* create(const QString& key, const QString& options) override;
};
