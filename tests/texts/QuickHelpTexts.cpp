#include "texts/Texts.h"

#include "support/App.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QMetaEnum>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

// The texts of the quick help: sections, keys, buttons and wheels as people read them, and the names that QML
// uses.

using namespace tarqa::housekeeping;

namespace {

const DocumentId s_document = DocumentId::build(7);

QAbstractListModel& model(unsigned int section)
{
    return *QuickHelpManager::instance().sectionModel(static_cast<QuickHelpSection>(section));
}

std::function<std::string()> section(unsigned int number)
{
    return [number] { return model(number).headerData(0, Qt::Horizontal).toString().toStdString(); };
}

/// What a list shows for an attached entry.
std::string shown(AbstractQuickHelpInputEntry& entry)
{
    entry.setAttached(true);
    return model(1).index(0, 0).data().toString().toStdString();
}

std::function<std::string()> keys(const QKeySequence& keys)
{
    return [keys] {
        QuickHelpKeySequenceEntry entry(nullptr, s_document, keys, "text", QuickHelpSection::View);
        return shown(entry);
    };
}

std::function<std::string()> button(Qt::MouseButton button, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [button, modifiers] {
        QuickHelpMouseButtonEntry entry(
            nullptr, s_document, button, modifiers, "text", QuickHelpSection::View);
        return shown(entry);
    };
}

std::function<std::string()> wheel(MouseWheelDelta delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [delta, modifiers] {
        QuickHelpMouseWheelEntry entry(nullptr, s_document, delta, modifiers, "text", QuickHelpSection::View);
        return shown(entry);
    };
}

// Names for QML

std::function<std::string()> role(int number)
{
    return [number] { return model(1).roleNames().value(number).toStdString(); };
}

std::string roles()
{
    const QMetaObject& meta = *model(1).metaObject();
    const QMetaEnum roles = meta.enumerator(meta.indexOfEnumerator("CommandModelRoles"));
    std::string text;
    for (int i = 0; i < roles.keyCount(); ++i) {
        text += roles.key(i) + (' ' + std::to_string(roles.value(i))) + ';';
    }
    return text;
}

/// What a class adds to its base, each with a semicolon behind it.
std::string methods(const QMetaObject& meta, QMetaMethod::MethodType type)
{
    std::string text;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == type) {
            text += meta.method(i).methodSignature().toStdString() + ';';
        }
    }
    return text;
}

std::string entry_properties()
{
    const QMetaObject& meta = AbstractQuickHelpEntry::staticMetaObject;
    std::string text;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        text += meta.property(i).name() + std::string(";");
    }
    return text;
}

/// What the engine says of a scene that makes an object of the type.
std::string refusal()
{
    const support::App app;
    ApplicationManager::registerQmlTypes();
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(
        "import " + QByteArray(ApplicationManager::QML_NAMESPACE) + " 1.0\nQuickHelpInputModel { }", QUrl());
    EXPECT_TRUE(support::wait_until([&component] { return !component.isLoading(); }));
    const QList<QQmlError> errors = component.errors();
    return errors.size() == 1 ? errors[0].description().toStdString() : "not refused";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(QuickHelp, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"SectionCurrentTool", "Current Tool", section(0)},
        {"SectionView", "View", section(1)},
        {"SectionNavigator", "Navigator", section(2)},
        {"SectionSelection", "Selection", section(3)},
        {"SectionVisibility", "Visibility", section(4)},
        {"SectionTools", "Tools", section(5)},
        {"SectionEditing", "Editing", section(6)},
        {"SectionFile", "File", section(7)},
        {"KeyUp", "&uarr;", keys(QKeySequence(1))},
        {"KeyDown", "&darr;", keys(QKeySequence(2))},
        {"KeyLeft", "&larr;", keys(QKeySequence(3))},
        {"KeyRight", "&rarr;", keys(QKeySequence(4))},
        {"KeyPlus", "+", keys(QKeySequence(Qt::Key_Plus))},
        {"KeyCtrlPlus", "Ctrl+", keys(QKeySequence(Qt::CTRL | Qt::Key_Plus))},
        {"ButtonLeft", "LMB", button(Qt::LeftButton)},
        {"ButtonRight", "RMB", button(Qt::RightButton)},
        {"ButtonMiddle", "MMB", button(Qt::MiddleButton)},
        {"ButtonOther", "Unknown button", button(Qt::BackButton)},
        {"ButtonWithShift", "Shift+LMB", button(Qt::LeftButton, Qt::ShiftModifier)},
        {"ButtonWithCtrl", "Ctrl+LMB", button(Qt::LeftButton, Qt::ControlModifier)},
        {"ButtonWithCtrlShift", "Ctrl+Shift+LMB",
            button(Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier)},
        {"ButtonWithAlt", "Alt+LMB", button(Qt::LeftButton, Qt::AltModifier)},
        {"ButtonWithMeta", "Alt+Shift+LMB", button(Qt::LeftButton, Qt::MetaModifier)},
        {"ButtonWithMetaShift", "Ctrl+Alt+LMB", button(Qt::LeftButton, Qt::MetaModifier | Qt::ShiftModifier)},
        {"ButtonWithCtrlAlt", "LMB", button(Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier)},
        {"WheelUp", "Wheel &#9650;", wheel(WheelUp)},
        {"WheelDown", "Wheel &#960;", wheel(WheelDown)},
        {"WheelEither", "Wheel", wheel(WheelEither)},
        {"WheelDownWithShift", "Shift+Wheel &#960;", wheel(WheelDown, Qt::ShiftModifier)},
        {"RoleCommand", "command", role(0)},
        {"RoleDescription", "description", role(256)},
        {"RoleVisible", "visible", role(257)},
        {"RoleDocId", "docId", role(258)},
        {"Roles", "Command 0;Description 256;Visible 257;DocId 258;", roles},
        {"ModelSlots",
            "addInput(const AbstractQuickHelpInputEntry*);updateInput(QuickHelpEntryId);"
            "removeInput(QuickHelpEntryId);",
            [] { return methods(*model(1).metaObject(), QMetaMethod::Slot); }},
        {"EntrySignals",
            "attachedChanged(bool);entryChanged(QuickHelpEntryId);descriptionChanged(QString);"
            "visibleChanged(bool);",
            [] { return methods(AbstractQuickHelpEntry::staticMetaObject, QMetaMethod::Signal); }},
        {"EntrySlots",
            "setAttached(bool);setVisible(bool);setDescription(QString);setSection(QuickHelpSection);",
            [] { return methods(AbstractQuickHelpEntry::staticMetaObject, QMetaMethod::Slot); }},
        {"EntryProperties", "description;visible;", entry_properties},
        {"ManagerSignals", "titleChanged(DocumentId,QString);descriptionChanged(DocumentId,QString);",
            [] { return methods(QuickHelpManager::staticMetaObject, QMetaMethod::Signal); }},
        {"ManagerSlots", "onDescriptionChanged();",
            [] { return methods(QuickHelpManager::staticMetaObject, QMetaMethod::Slot); }},
        {"ReasonForScenes", "QuickHelpModels should be obtained from the QuickHelpManager", refusal},
    }),
    texts::name_of);
