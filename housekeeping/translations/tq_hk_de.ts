<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en_GB">
<context>
    <name>QObject</name>
    <message>
        <source>A C++ fatal error has occured : </source>
        <translation>Ein schwerwiegender C++-Fehler ist aufgetreten: </translation>
    </message>
    <message>
        <source>An Exception creating a fatal error has occured : </source>
        <translation>Eine Ausnahme hat zu einem schwerwiegenden Fehler geführt: </translation>
    </message>
    <message>
        <source>Fatal error!  </source>
        <translation>Schwerwiegender Fehler!  </translation>
    </message>
    <message>
        <source> has terminated unexpectedly. Please contact Velmor Stade with a bug report.</source>
        <translation> wurde unerwartet beendet. Bitte melden Sie den Fehler an Velmor Stade.</translation>
    </message>
    <message>
        <source>A full failure report can be found in the file : </source>
        <translation>Einen vollständigen Fehlerbericht finden Sie in der Datei: </translation>
    </message>
    <message>
        <source>
Detail: </source>
        <translation>
Einzelheiten: </translation>
    </message>
    <message>
        <source>Attempt to get invalid model from document</source>
        <translation>Das Dokument hat kein gültiges Modell</translation>
    </message>
    <message>
        <source>Document does not exist</source>
        <translation>Das Dokument gibt es nicht</translation>
    </message>
    <message>
        <source>Command was cancelled by user!</source>
        <translation>Der Befehl wurde abgebrochen!</translation>
    </message>
    <message>
        <source>Insertion Cancelled</source>
        <translation>Einfügen abgebrochen</translation>
    </message>
    <message>
        <source>An unknown serious error has occured in this Command</source>
        <translation>In diesem Befehl ist ein unbekannter schwerer Fehler aufgetreten</translation>
    </message>
    <message>
        <source>No temporary directory can be made in %1: %2</source>
        <translation>In %1 kann kein temporärer Ordner angelegt werden: %2</translation>
    </message>
</context>
<context>
    <name>pkBase::QLogFileViewer</name>
    <message>
        <source>There is no log file.</source>
        <translation>Es gibt keine Protokolldatei.</translation>
    </message>
    <message>
        <source>It is no file.</source>
        <translation>Das ist keine Datei.</translation>
    </message>
    <message>
        <source>Log File</source>
        <translation>Protokolldatei</translation>
    </message>
    <message>
        <source>Text of the log</source>
        <translation>Text des Protokolls</translation>
    </message>
    <message>
        <source>Find text</source>
        <translation>Text suchen</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>Match c&amp;ase</source>
        <translation>&amp;Groß-/Kleinschreibung</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Follow the end</source>
        <translation>&amp;Ende verfolgen</translation>
    </message>
    <message>
        <source>Show new entries as they come, while the end of the log is in view</source>
        <translation>Neue Einträge sofort anzeigen, solange das Ende des Protokolls zu sehen ist</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected text, or all of it</source>
        <translation>Den ausgewählten Text kopieren, oder den ganzen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>The log file cannot be read: %1</source>
        <translation>Die Protokolldatei kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>(The first %1 bytes of the file are not shown.)</source>
        <translation>(Die ersten %1 Byte der Datei werden nicht angezeigt.)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not found.</source>
        <translation>„%1“ wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>Went on from the end.</source>
        <translation>Vom Ende an weitergesucht.</translation>
    </message>
    <message>
        <source>Went on from the beginning.</source>
        <translation>Vom Anfang an weitergesucht.</translation>
    </message>
    <message>
        <source>The selected text was copied.</source>
        <translation>Der ausgewählte Text wurde kopiert.</translation>
    </message>
    <message>
        <source>The whole log was copied.</source>
        <translation>Das ganze Protokoll wurde kopiert.</translation>
    </message>
</context>
<context>
    <name>pkBase::QPKAboutBox</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Build %1</source>
        <translation>Build %1</translation>
    </message>
    <message>
        <source> (%1)</source>
        <translation> (%1)</translation>
    </message>
    <message>
        <source> of %1</source>
        <translation> vom %1</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy version and build, for a report</source>
        <translation>Version und Build für einen Bericht kopieren</translation>
    </message>
    <message>
        <source>Log file: %1</source>
        <translation>Protokolldatei: %1</translation>
    </message>
    <message>
        <source>&amp;Show Log File</source>
        <translation>&amp;Protokolldatei anzeigen</translation>
    </message>
    <message>
        <source>The page %1 cannot be read.</source>
        <translation>Die Seite %1 kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>No program was found that opens %1</source>
        <translation>Kein Programm gefunden, das %1 öffnet</translation>
    </message>
    <message>
        <source>Qt %1</source>
        <translation>Qt %1</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>pkBase::QPKHelpButton</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::AbstractCommand</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>An unknown serious error has occured in this Command : </source>
        <translation>In diesem Befehl ist ein unbekannter schwerer Fehler aufgetreten: </translation>
    </message>
    <message>
        <source>An unknown serious error has occured in this Command UNDO : </source>
        <translation>Beim Rückgängigmachen dieses Befehls ist ein unbekannter schwerer Fehler aufgetreten: </translation>
    </message>
    <message>
        <source>An unknown serious error has occured in this Command UNDO</source>
        <translation>Beim Rückgängigmachen dieses Befehls ist ein unbekannter schwerer Fehler aufgetreten</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::CommandManager</name>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>This Document is busy - please try again when current operation is finished</source>
        <translation>Dieses Dokument ist beschäftigt. Bitte versuchen Sie es erneut, wenn der laufende Vorgang beendet ist</translation>
    </message>
    <message>
        <source>This Document is busy - please try to UNDO again when current operation is finished</source>
        <translation>Dieses Dokument ist beschäftigt. Bitte machen Sie den Schritt rückgängig, wenn der laufende Vorgang beendet ist</translation>
    </message>
    <message>
        <source>This Document is busy - please try to REDO again when current operation is finished</source>
        <translation>Dieses Dokument ist beschäftigt. Bitte stellen Sie den Schritt wieder her, wenn der laufende Vorgang beendet ist</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::CompositeCommand</name>
    <message>
        <source>An unknown serious error has occured in this Command : </source>
        <translation>In diesem Befehl ist ein unbekannter schwerer Fehler aufgetreten: </translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>
Continue ?</source>
        <translation>
Fortfahren?</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::ErrorHandler</name>
    <message>
        <source>Fatal Error</source>
        <translation>Schwerwiegender Fehler</translation>
    </message>
    <message>
        <source>Tarq Fatal Error</source>
        <translation>Schwerwiegender Fehler in Tarq</translation>
    </message>
    <message>
        <source>Save error log to file for PKX support</source>
        <translation>Fehlerprotokoll für den PKX-Kundendienst in eine Datei speichern</translation>
    </message>
    <message>
        <source>Save Tarq Error Log</source>
        <translation>Fehlerprotokoll von Tarq speichern</translation>
    </message>
    <message>
        <source>Log files (*.log)</source>
        <translation>Protokolldateien (*.log)</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::LastWords</name>
    <message>
        <source>The program ended unexpectedly</source>
        <translation>Das Programm wurde unerwartet beendet</translation>
    </message>
    <message>
        <source>When it ran the last time, the program wrote down what it was doing when it ended. Save this and the error log of that time to a file for support?</source>
        <translation>Beim letzten Mal hat das Programm an seinem Ende aufgeschrieben, was es gerade tat. Sollen diese Angaben und das Fehlerprotokoll von damals in einer Datei für den Support gespeichert werden?</translation>
    </message>
    <message>
        <source>Log files (*.log)</source>
        <translation>Protokolldateien (*.log)</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>%1 cannot be written</source>
        <translation>%1 kann nicht geschrieben werden</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::QuickHelpManager</name>
    <message>
        <source>Current Tool</source>
        <translation>Aktuelles Werkzeug</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Navigator</source>
        <translation>Navigator</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Visibility</source>
        <translation>Sichtbarkeit</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Editing</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::QuickHelpMouseButtonEntry</name>
    <message>
        <source>LMB</source>
        <translation>LMT</translation>
    </message>
    <message>
        <source>RMB</source>
        <translation>RMT</translation>
    </message>
    <message>
        <source>MMB</source>
        <translation>MMT</translation>
    </message>
    <message>
        <source>Unknown button</source>
        <translation>Unbekannte Taste</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::QuickHelpMouseWheelEntry</name>
    <message>
        <source>Wheel &amp;#9650;</source>
        <translation>Mausrad &amp;#9650;</translation>
    </message>
    <message>
        <source>Wheel &amp;#960;</source>
        <translation>Mausrad &amp;#960;</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Mausrad</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::gui::HelpManager</name>
    <message>
        <source>&amp;Contents...</source>
        <translation>&amp;Inhalt...</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>&amp;About </source>
        <translation>&amp;Über </translation>
    </message>
    <message>
        <source>&amp;Quick Help...</source>
        <translation>&amp;Kurzhilfe...</translation>
    </message>
    <message>
        <source>Show &amp;Log File...</source>
        <translation>&amp;Protokolldatei anzeigen...</translation>
    </message>
    <message>
        <source>&amp;Shortcuts...</source>
        <translation>&amp;Tastenkürzel...</translation>
    </message>
    <message>
        <source> &amp;Help</source>
        <translation> &amp;Hilfe</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>This program has no help that could show the page &quot;%1&quot;.</source>
        <translation>Dieses Programm hat keine Hilfe, die die Seite „%1“ anzeigen könnte.</translation>
    </message>
    <message>
        <source>The program could not be started again: %1</source>
        <translation>Das Programm konnte nicht neu gestartet werden: %1</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::gui::OpenOutside</name>
    <message>
        <source>No Program Found</source>
        <translation>Kein Programm gefunden</translation>
    </message>
    <message>
        <source>No program was found on this computer that opens
%1</source>
        <translation>Auf diesem Rechner wurde kein Programm gefunden, das dies öffnet:
%1</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::gui::PreferencesDialog</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Tab 1</source>
        <translation>Seite 1</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>The page failed for an unknown reason.</source>
        <translation>Die Seite ist aus unbekanntem Grund fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::gui::QHelpWebView</name>
    <message>
        <source>Online Help: </source>
        <translation>Hilfe: </translation>
    </message>
    <message>
        <source>Open Help in Web Browser</source>
        <translation>Hilfe im Webbrowser öffnen</translation>
    </message>
    <message>
        <source>Open Current Page Web Browser</source>
        <translation>Aktuelle Seite im Webbrowser öffnen</translation>
    </message>
    <message>
        <source>Print Help</source>
        <translation>Hilfe drucken</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::gui::QHelpWebViewPage</name>
    <message>
        <source>This page cannot be shown</source>
        <translation>Diese Seite kann nicht angezeigt werden</translation>
    </message>
</context>
<context>
    <name>tarqa::housekeeping::gui::UndoRedoPresentation</name>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Undo the last operation completed on the active document</source>
        <translation>Macht den letzten Vorgang am aktiven Dokument rückgängig</translation>
    </message>
    <message>
        <source>Ctrl+Z</source>
        <comment>Edit|Undo</comment>
        <translation>Ctrl+Z</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Redo the last operation undone on the active document</source>
        <translation>Stellt den zuletzt rückgängig gemachten Vorgang am aktiven Dokument wieder her</translation>
    </message>
    <message>
        <source>Ctrl+Y</source>
        <comment>Edit|Redo</comment>
        <translation>Ctrl+Y</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source> Action</source>
        <translation> Schritt</translation>
    </message>
    <message>
        <source> Actions</source>
        <translation> Schritte</translation>
    </message>
</context>
</TS>
