#pragma once

#include "help/Bindings.h"

#include <QtCore/QObject>

#include <map>

class QAction;

namespace terrain {

/// The actions of the main window, made from the table of bindings: text, key and icon. Main thread.
class Deeds : public QObject
{
    Q_OBJECT

public:
    explicit Deeds(QObject* p_parent = nullptr);

    QAction& action(Deed deed) const { return *m_actions.at(deed); }
    /// Enables or disables the deeds that need an open document.
    void document_open(bool open);
    /// The same with those that need a view in three dimensions.
    void scene_seen(bool seen) const;

private:
    std::map<Deed, QAction*> m_actions; // children
};

} // namespace terrain
