<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en_GB">
<context>
    <name>QObject</name>
    <message>
        <source>GeoTIFF</source>
        <translation>GeoTIFF</translation>
    </message>
    <message>
        <source>ASCII grid</source>
        <translation>ASCII-Raster</translation>
    </message>
    <message>
        <source>Contour lines</source>
        <translation>Höhenlinien</translation>
    </message>
    <message>
        <source>&quot;.%1&quot; (%2)</source>
        <translation>„.%1“ (%2)</translation>
    </message>
    <message>
        <source>the name of an exported file must end in one of %1</source>
        <translation>der Name einer exportierten Datei muss auf eines von diesen enden: %1</translation>
    </message>
    <message>
        <source>Exported &quot;%1&quot;</source>
        <translation>„%1“ exportiert</translation>
    </message>
    <message>
        <source>Opened &quot;%1&quot; (%2)</source>
        <translation>„%1“ geöffnet (%2)</translation>
    </message>
    <message>
        <source>what was written cannot be read back. %1</source>
        <translation>was geschrieben wurde, lässt sich nicht wieder lesen. %1</translation>
    </message>
    <message>
        <source>an ASCII grid cannot hold so small cells or so precise a place</source>
        <translation>ein ASCII-Raster kann so kleine Zellen oder eine so genaue Lage nicht aufnehmen</translation>
    </message>
    <message>
        <source>an ASCII grid cannot hold a rotated raster; GeoTIFF can</source>
        <translation>ein ASCII-Raster kann kein gedrehtes Raster aufnehmen; GeoTIFF kann es</translation>
    </message>
    <message>
        <source>an ASCII grid cannot hold a raster whose first row is not the northern one, or whose first column is not the western one; GeoTIFF can</source>
        <translation>ein ASCII-Raster kann kein Raster aufnehmen, dessen erste Zeile nicht die nördlichste oder dessen erste Spalte nicht die westlichste ist; GeoTIFF kann es</translation>
    </message>
    <message>
        <source>The contour lines cannot be made: %1</source>
        <translation>Die Höhenlinien können nicht erzeugt werden: %1</translation>
    </message>
    <message>
        <source>lines every %1 would be too close together</source>
        <translation>Linien im Abstand von %1 lägen zu dicht beieinander</translation>
    </message>
    <message>
        <source>there are no contour lines at an interval of %1</source>
        <translation>bei einem Abstand von %1 gibt es keine Höhenlinien</translation>
    </message>
    <message>
        <source>it is a directory</source>
        <translation>das ist ein Ordner</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>das ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it is read-only</source>
        <translation>sie ist schreibgeschützt</translation>
    </message>
    <message>
        <source>there is no directory &quot;%1&quot;</source>
        <translation>es gibt keinen Ordner „%1“</translation>
    </message>
    <message>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: its %2 x %3 cells need %4 GB of memory, and of this machine&apos;s a raster may take %5 GB</source>
        <translation>„%1“ kann nicht gelesen werden: Die %2 x %3 Zellen brauchen %4 GB Speicher, und ein Raster darf auf diesem Rechner %5 GB belegen</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>„%1“ kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>es gibt keine solche Datei</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>it holds vector data, no raster</source>
        <translation>sie enthält Vektordaten, kein Raster</translation>
    </message>
    <message>
        <source>it holds no band</source>
        <translation>sie enthält keinen Kanal</translation>
    </message>
    <message>
        <source>it holds several rasters; open one of them:%1</source>
        <translation>sie enthält mehrere Raster; öffnen Sie eines davon:%1</translation>
    </message>
    <message>
        <source>it has no band %1</source>
        <translation>sie hat keinen Kanal %1</translation>
    </message>
    <message>
        <source>its band %1 holds complex numbers, no heights</source>
        <translation>ihr Kanal %1 enthält komplexe Zahlen, keine Höhen</translation>
    </message>
    <message>
        <source>its band %1 holds categories, no heights</source>
        <translation>ihr Kanal %1 enthält Klassen, keine Höhen</translation>
    </message>
    <message>
        <source>the file is broken or cut short: %1</source>
        <translation>die Datei ist beschädigt oder abgeschnitten: %1</translation>
    </message>
    <message>
        <source>there is not enough memory for its cells</source>
        <translation>der Speicher reicht für ihre Zellen nicht aus</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not &quot;nearest&quot;, &quot;bilinear&quot; or &quot;average&quot;</source>
        <translation>„%1“ ist weder „nearest“ noch „bilinear“ noch „average“</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>%1 x %2 %3</source>
        <translation>%1 x %2 %3</translation>
    </message>
    <message>
        <source>none, all cells are without data</source>
        <translation>keine, alle Zellen sind ohne Daten</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>%1 x %2 cells</source>
        <translation>%1 x %2 Zellen</translation>
    </message>
    <message>
        <source>cell size</source>
        <translation>Zellengröße</translation>
    </message>
    <message>
        <source>reference system</source>
        <translation>Bezugssystem</translation>
    </message>
    <message>
        <source>data type</source>
        <translation>Datentyp</translation>
    </message>
    <message>
        <source>unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>range</source>
        <translation>Wertebereich</translation>
    </message>
    <message>
        <source>mean</source>
        <translation>Mittelwert</translation>
    </message>
    <message>
        <source>no-data</source>
        <translation>ohne Daten</translation>
    </message>
    <message>
        <source>%1 cells</source>
        <translation>%1 Zellen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number from %2 on</source>
        <translation>„%1“ ist keine ganze Zahl ab %2</translation>
    </message>
    <message>
        <source>a double quote is not closed</source>
        <translation>ein Anführungszeichen wird nicht geschlossen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>„%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>%1 m</source>
        <translation>%1 m</translation>
    </message>
    <message>
        <source>%1 km</source>
        <translation>%1 km</translation>
    </message>
    <message>
        <source>every %1</source>
        <translation>alle %1</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
    <message>
        <source>There are too many triangles to draw their edges.</source>
        <translation>Es sind zu viele Dreiecke, um ihre Kanten zu zeichnen.</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>keine Daten</translation>
    </message>
    <message>
        <source>column %1, row %2</source>
        <translation>Spalte %1, Zeile %2</translation>
    </message>
    <message>
        <source>%1   at %2</source>
        <translation>%1   bei %2</translation>
    </message>
    <message>
        <source>%1   at %2, %3   (%4)</source>
        <translation>%1   bei %2, %3   (%4)</translation>
    </message>
    <message>
        <source>The relief cannot be shaded: %1</source>
        <translation>Das Relief kann nicht geschummert werden: %1</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Öffnen…</translation>
    </message>
    <message>
        <source>Open elevation rasters</source>
        <translation>Höhenraster öffnen</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save the document to its own file</source>
        <translation>Dokument in seiner eigenen Datei speichern</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>Speichern &amp;unter…</translation>
    </message>
    <message>
        <source>Save the document to another file</source>
        <translation>Dokument in einer anderen Datei speichern</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>&amp;Exportieren…</translation>
    </message>
    <message>
        <source>Write the raster or its contour lines to a file</source>
        <translation>Raster oder Höhenlinien in eine Datei schreiben</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Close the document</source>
        <translation>Dokument schließen</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>E&amp;instellungen…</translation>
    </message>
    <message>
        <source>Change how the program looks and works</source>
        <translation>Ändern, wie das Programm aussieht und arbeitet</translation>
    </message>
    <message>
        <source>Report a Pro&amp;blem…</source>
        <translation>&amp;Problem melden…</translation>
    </message>
    <message>
        <source>Describe a problem to the makers, in the web browser</source>
        <translation>Den Herstellern im Webbrowser ein Problem beschreiben</translation>
    </message>
    <message>
        <source>Res&amp;tart</source>
        <translation>&amp;Neu starten</translation>
    </message>
    <message>
        <source>Close all, quit and start again</source>
        <translation>Alles schließen, beenden und neu starten</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Close all and quit</source>
        <translation>Alles schließen und beenden</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>&amp;Whole Raster</source>
        <translation>Ganzes &amp;Raster</translation>
    </message>
    <message>
        <source>Show the whole raster</source>
        <translation>Das ganze Raster zeigen</translation>
    </message>
    <message>
        <source>Look &amp;Left</source>
        <translation>Nach &amp;links</translation>
    </message>
    <message>
        <source>Look further left</source>
        <translation>Weiter nach links sehen</translation>
    </message>
    <message>
        <source>Look &amp;Right</source>
        <translation>Nach r&amp;echts</translation>
    </message>
    <message>
        <source>Look further right</source>
        <translation>Weiter nach rechts sehen</translation>
    </message>
    <message>
        <source>Look &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Look further up</source>
        <translation>Weiter nach oben sehen</translation>
    </message>
    <message>
        <source>Look &amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>Look further down</source>
        <translation>Weiter nach unten sehen</translation>
    </message>
    <message>
        <source>&amp;Contour Lines</source>
        <translation>&amp;Höhenlinien</translation>
    </message>
    <message>
        <source>Show or hide contour lines</source>
        <translation>Höhenlinien zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Le&amp;gend</source>
        <translation>Legen&amp;de</translation>
    </message>
    <message>
        <source>Show or hide what the colours mean</source>
        <translation>Zeigen oder verbergen, was die Farben bedeuten</translation>
    </message>
    <message>
        <source>&amp;Scale Bar</source>
        <translation>&amp;Maßstabsleiste</translation>
    </message>
    <message>
        <source>Show or hide how long things are</source>
        <translation>Maßstabsleiste zeigen oder verbergen</translation>
    </message>
    <message>
        <source>&amp;Previous Document</source>
        <translation>&amp;Vorheriges Dokument</translation>
    </message>
    <message>
        <source>Previous document</source>
        <translation>Vorheriges Dokument</translation>
    </message>
    <message>
        <source>&amp;Next Document</source>
        <translation>&amp;Nächstes Dokument</translation>
    </message>
    <message>
        <source>Next document</source>
        <translation>Nächstes Dokument</translation>
    </message>
    <message>
        <source>Quick &amp;Help</source>
        <translation>Kur&amp;zhilfe</translation>
    </message>
    <message>
        <source>Show the keys and what the mouse does</source>
        <translation>Zeigen, was Tasten und Maus bewirken</translation>
    </message>
    <message>
        <source>S&amp;tatistics</source>
        <translation>&amp;Statistik</translation>
    </message>
    <message>
        <source>Show figures of the heights, their distribution and a profile</source>
        <translation>Kennzahlen der Höhen, ihre Verteilung und ein Profil zeigen</translation>
    </message>
    <message>
        <source>La&amp;yers</source>
        <translation>E&amp;benen</translation>
    </message>
    <message>
        <source>Choose what the map shows</source>
        <translation>Wählen, was die Karte zeigt</translation>
    </message>
    <message>
        <source>Help about this map or panel</source>
        <translation>Hilfe zu dieser Karte oder diesem Bedienfeld</translation>
    </message>
    <message>
        <source>Show the Quick Help panel</source>
        <translation>Kurzhilfe anzeigen</translation>
    </message>
    <message>
        <source>Drag to move the map</source>
        <translation>Ziehen verschiebt die Karte</translation>
    </message>
    <message>
        <source>Click for the profile through a cell</source>
        <translation>Klick zeigt das Profil durch eine Zelle</translation>
    </message>
    <message>
        <source>Zoom at the pointer</source>
        <translation>Am Mauszeiger zoomen</translation>
    </message>
    <message>
        <source>The help is not installed: there is no folder &quot;%1&quot;.</source>
        <translation>Die Hilfe ist nicht installiert: Es gibt keinen Ordner „%1“.</translation>
    </message>
    <message>
        <source>The help has no page about &quot;%1&quot;.</source>
        <translation>Die Hilfe hat keine Seite über „%1“.</translation>
    </message>
    <message>
        <source>The page &quot;%1&quot; of the help is missing.</source>
        <translation>Die Seite „%1“ der Hilfe fehlt.</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;Contents&lt;/a&gt; leads to all pages that there are.</source>
        <translation>&lt;a href=&quot;%1&quot;&gt;Inhalt&lt;/a&gt; führt zu allen vorhandenen Seiten.</translation>
    </message>
    <message>
        <source>Installing the program again brings the help back.</source>
        <translation>Wenn Sie das Programm neu installieren, ist die Hilfe wieder da.</translation>
    </message>
    <message>
        <source>There is no such page</source>
        <translation>Diese Seite gibt es nicht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be written: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>No web browser was found that opens &quot;%1&quot;</source>
        <translation>Kein Webbrowser gefunden, der „%1“ öffnet</translation>
    </message>
    <message>
        <source>Keys or mouse</source>
        <translation>Tasten oder Maus</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Wirkung</translation>
    </message>
    <message>
        <source>What is possible with &lt;strong&gt;%1&lt;/strong&gt;, the raster that is on top, and with the program:</source>
        <translation>Was mit &lt;strong&gt;%1&lt;/strong&gt;, dem Raster im Vordergrund, und mit dem Programm möglich ist:</translation>
    </message>
    <message>
        <source>What is possible while no raster is open. With one, there is more; open one and come back.</source>
        <translation>Was möglich ist, solange kein Raster geöffnet ist. Mit einem Raster gibt es mehr; öffnen Sie eines und kommen Sie zurück.</translation>
    </message>
    <message>
        <source>%1 × %2 cells</source>
        <translation>%1 × %2 Zellen</translation>
    </message>
    <message>
        <source>an overview, each of %1 × %1 cells</source>
        <translation>eine Übersicht, jede Zelle aus %1 × %1</translation>
    </message>
    <message>
        <source>heights in %1</source>
        <translation>Höhen in %1</translation>
    </message>
    <message>
        <source>depth, down is positive</source>
        <translation>Tiefe, positiv nach unten</translation>
    </message>
    <message>
        <source>elevation, up is positive</source>
        <translation>Höhe, positiv nach oben</translation>
    </message>
    <message>
        <source>Heights in</source>
        <translation>Höhen in</translation>
    </message>
    <message>
        <source>Vertical sign</source>
        <translation>Vorzeichen</translation>
    </message>
    <message>
        <source>Band</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>modified</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>busy</source>
        <translation>beschäftigt</translation>
    </message>
    <message>
        <source>overview</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>no file of its own</source>
        <translation>ohne eigene Datei</translation>
    </message>
    <message>
        <source>read-only file</source>
        <translation>schreibgeschützte Datei</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Cells as</source>
        <translation>Zellen als</translation>
    </message>
    <message>
        <source>Reference system</source>
        <translation>Bezugssystem</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>1 of %1 columns and rows</source>
        <translation>1 von %1 Spalten und Zeilen</translation>
    </message>
    <message>
        <source>Saved to</source>
        <translation>Gespeichert in</translation>
    </message>
    <message>
        <source>no file of its own; Save asks for one</source>
        <translation>ohne eigene Datei; Speichern fragt danach</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>as in its file</source>
        <translation>wie in seiner Datei</translation>
    </message>
    <message>
        <source>-overview</source>
        <translation>-uebersicht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is gone. Write it again?</source>
        <translation>„%1“ ist nicht mehr da. Erneut schreiben?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has changed on disk since it was read. Overwrite it all the same?</source>
        <translation>„%1“ hat sich auf dem Datenträger geändert, seit die Datei gelesen wurde. Trotzdem überschreiben?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is the file that the raster was read from. Overwrite it with the changed raster?

Colours, overviews and remarks in the file are not kept.</source>
        <translation>„%1“ ist die Datei, aus der das Raster gelesen wurde. Mit dem geänderten Raster überschreiben?

Farben, Übersichten und Anmerkungen in der Datei bleiben nicht erhalten.</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Rasters (*.tif *.tiff *.asc *.vrt *.img *.hgt);;All files (*)</source>
        <translation>Raster (*.tif *.tiff *.asc *.vrt *.img *.hgt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Contour Lines</source>
        <translation>Höhenlinien</translation>
    </message>
    <message>
        <source>&amp;Interval:</source>
        <translation>&amp;Abstand:</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has changes that are not written to a file.</source>
        <translation>„%1“ hat Änderungen, die in keine Datei geschrieben sind.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>&amp;Write This File</source>
        <translation>Diese Datei &amp;schreiben</translation>
    </message>
    <message>
        <source>%1.

An overview has one cell for %2 x %2 of the raster. It can be looked at and changed as any other, and saved to another file.</source>
        <translation>%1.

Eine Übersicht hat eine Zelle für %2 x %2 des Rasters. Sie kann wie jedes Raster betrachtet, geändert und in einer anderen Datei gespeichert werden.</translation>
    </message>
    <message>
        <source>&amp;Open Overview</source>
        <translation>Übersicht &amp;öffnen</translation>
    </message>
    <message>
        <source>%1 reads &quot;%2&quot;, expected &quot;%3&quot;</source>
        <translation>%1 lautet „%2“, erwartet „%3“</translation>
    </message>
    <message>
        <source>the undo entry</source>
        <translation>der Eintrag zum Rückgängigmachen</translation>
    </message>
    <message>
        <source>the history has %1 entries, expected %2</source>
        <translation>der Verlauf hat %1 Einträge, erwartet %2</translation>
    </message>
    <message>
        <source>there is a dialog for the parameters</source>
        <translation>es gibt einen Dialog für die Parameter</translation>
    </message>
    <message>
        <source>the dialog is shown</source>
        <translation>der Dialog wird angezeigt</translation>
    </message>
    <message>
        <source>its help button opens the page about the command</source>
        <translation>seine Hilfeschaltfläche öffnet die Seite über den Befehl</translation>
    </message>
    <message>
        <source>the heights have changed</source>
        <translation>die Höhen haben sich geändert</translation>
    </message>
    <message>
        <source>the title says that there are changes</source>
        <translation>der Titel sagt, dass es Änderungen gibt</translation>
    </message>
    <message>
        <source>there is a list</source>
        <translation>es gibt eine Liste</translation>
    </message>
    <message>
        <source>the list is shown</source>
        <translation>die Liste wird angezeigt</translation>
    </message>
    <message>
        <source>checked entries: %1, expected %2</source>
        <translation>angekreuzte Einträge: %1, erwartet %2</translation>
    </message>
    <message>
        <source>the last entry</source>
        <translation>der letzte Eintrag</translation>
    </message>
    <message>
        <source>the command is half-way</source>
        <translation>der Befehl ist halb fertig</translation>
    </message>
    <message>
        <source>the progress bar shows %1 %</source>
        <translation>der Fortschrittsbalken zeigt %1 %</translation>
    </message>
    <message>
        <source>it can be cancelled</source>
        <translation>er kann abgebrochen werden</translation>
    </message>
    <message>
        <source>nothing is running</source>
        <translation>nichts läuft</translation>
    </message>
    <message>
        <source>the heights are those of before</source>
        <translation>die Höhen sind die von vorher</translation>
    </message>
    <message>
        <source>the heights are those of the file</source>
        <translation>die Höhen sind die der Datei</translation>
    </message>
    <message>
        <source>the redo entry</source>
        <translation>der Eintrag zum Wiederherstellen</translation>
    </message>
    <message>
        <source>there is a help window</source>
        <translation>es gibt ein Hilfefenster</translation>
    </message>
    <message>
        <source>the help window is shown</source>
        <translation>das Hilfefenster wird angezeigt</translation>
    </message>
    <message>
        <source>it shows the page &quot;%1&quot;, expected &quot;%2&quot;</source>
        <translation>es zeigt die Seite „%1“, erwartet „%2“</translation>
    </message>
    <message>
        <source>there is such a page</source>
        <translation>diese Seite gibt es</translation>
    </message>
    <message>
        <source>there is something to read</source>
        <translation>es gibt etwas zu lesen</translation>
    </message>
    <message>
        <source>it lists %1 shortcuts, expected %2</source>
        <translation>es listet %1 Tastenkürzel auf, erwartet %2</translation>
    </message>
    <message>
        <source>there is an about box</source>
        <translation>es gibt ein Infofenster</translation>
    </message>
    <message>
        <source>the about box is shown</source>
        <translation>das Infofenster wird angezeigt</translation>
    </message>
    <message>
        <source>its title &quot;%1&quot; holds &quot;%2&quot;</source>
        <translation>sein Titel „%1“ enthält „%2“</translation>
    </message>
    <message>
        <source>it tells the version, %1</source>
        <translation>es nennt die Version, %1</translation>
    </message>
    <message>
        <source>it tells where the log is</source>
        <translation>es sagt, wo das Protokoll ist</translation>
    </message>
    <message>
        <source>the log is shown</source>
        <translation>das Protokoll wird angezeigt</translation>
    </message>
    <message>
        <source>it tells which file was opened</source>
        <translation>es sagt, welche Datei geöffnet wurde</translation>
    </message>
    <message>
        <source>it tells where it is</source>
        <translation>es sagt, wo es ist</translation>
    </message>
    <message>
        <source>the statistics are shown</source>
        <translation>die Statistik wird angezeigt</translation>
    </message>
    <message>
        <source>of %1 cells %2 have no data</source>
        <translation>von %1 Zellen haben %2 keine Daten</translation>
    </message>
    <message>
        <source>the distribution is drawn</source>
        <translation>die Verteilung ist gezeichnet</translation>
    </message>
    <message>
        <source>the profile has %1 points, expected %2</source>
        <translation>das Profil hat %1 Punkte, erwartet %2</translation>
    </message>
    <message>
        <source>it says where it is: &quot;%1&quot;</source>
        <translation>es sagt, wo es liegt: „%1“</translation>
    </message>
    <message>
        <source>the layers are shown</source>
        <translation>die Ebenen werden angezeigt</translation>
    </message>
    <message>
        <source>the box of the contour lines is checked</source>
        <translation>das Kästchen der Höhenlinien ist angekreuzt</translation>
    </message>
    <message>
        <source>the map has contour lines</source>
        <translation>die Karte hat Höhenlinien</translation>
    </message>
    <message>
        <source>the View menu says so too</source>
        <translation>das Menü Ansicht sagt es auch</translation>
    </message>
    <message>
        <source>there are preferences</source>
        <translation>es gibt Einstellungen</translation>
    </message>
    <message>
        <source>the preferences are shown</source>
        <translation>die Einstellungen werden angezeigt</translation>
    </message>
    <message>
        <source>they have %1 pages, expected %2</source>
        <translation>sie haben %1 Seiten, erwartet %2</translation>
    </message>
    <message>
        <source>the page is &quot;%1&quot;, expected &quot;%2&quot;</source>
        <translation>die Seite ist „%1“, erwartet „%2“</translation>
    </message>
    <message>
        <source>there is a help button</source>
        <translation>es gibt eine Hilfeschaltfläche</translation>
    </message>
    <message>
        <source>the page has something to set</source>
        <translation>auf der Seite gibt es etwas einzustellen</translation>
    </message>
    <message>
        <source>the background is %1, expected %2</source>
        <translation>der Hintergrund ist %1, erwartet %2</translation>
    </message>
    <message>
        <source>the preferences say %1</source>
        <translation>die Einstellungen sagen %1</translation>
    </message>
    <message>
        <source>the preferences stay open</source>
        <translation>die Einstellungen bleiben offen</translation>
    </message>
    <message>
        <source>the preferences are closed</source>
        <translation>die Einstellungen sind geschlossen</translation>
    </message>
    <message>
        <source>The folder &quot;%1&quot; cannot be made</source>
        <translation>Der Ordner „%1“ kann nicht angelegt werden</translation>
    </message>
    <message>
        <source>The picture &quot;%1&quot; cannot be made</source>
        <translation>Das Bild „%1“ kann nicht erzeugt werden</translation>
    </message>
    <message>
        <source>open documents: %1, expected %2</source>
        <translation>offene Dokumente: %1, erwartet %2</translation>
    </message>
    <message>
        <source>the title &quot;%1&quot; holds &quot;%2&quot;</source>
        <translation>der Titel „%1“ enthält „%2“</translation>
    </message>
    <message>
        <source>the relief is drawn</source>
        <translation>das Relief ist gezeichnet</translation>
    </message>
    <message>
        <source>the quick help has %1 rows, expected %2</source>
        <translation>die Kurzhilfe hat %1 Zeilen, erwartet %2</translation>
    </message>
    <message>
        <source>docked panels: %1, expected %2</source>
        <translation>angedockte Bedienfelder: %1, erwartet %2</translation>
    </message>
    <message>
        <source>the map is larger</source>
        <translation>die Karte ist größer</translation>
    </message>
    <message>
        <source>the status bar says &quot;%1&quot;, expected &quot;%2&quot;</source>
        <translation>die Statusleiste sagt „%1“, erwartet „%2“</translation>
    </message>
    <message>
        <source>the quick help is shown</source>
        <translation>die Kurzhilfe wird angezeigt</translation>
    </message>
    <message>
        <source>its picture is not uniform</source>
        <translation>ihr Bild ist nicht einfarbig</translation>
    </message>
    <message>
        <source>the list of documents has %1 entries, expected 2</source>
        <translation>die Liste der Dokumente hat %1 Einträge, erwartet 2</translation>
    </message>
    <message>
        <source>its history has %1 entries, expected 0</source>
        <translation>sein Verlauf hat %1 Einträge, erwartet 0</translation>
    </message>
    <message>
        <source>the menus are shown</source>
        <translation>die Menüs werden angezeigt</translation>
    </message>
    <message>
        <source>the recent files are %1, expected %2</source>
        <translation>die zuletzt geöffneten Dateien sind %1, erwartet %2</translation>
    </message>
    <message>
        <source>they have numbers to press</source>
        <translation>sie haben Nummern zum Drücken</translation>
    </message>
    <message>
        <source>the quick help is about &quot;%1&quot;, expected &quot;%2&quot;</source>
        <translation>die Kurzhilfe behandelt „%1“, erwartet „%2“</translation>
    </message>
    <message>
        <source>the quick help floats</source>
        <translation>die Kurzhilfe schwebt</translation>
    </message>
    <message>
        <source>the quick help is docked</source>
        <translation>die Kurzhilfe ist angedockt</translation>
    </message>
    <message>
        <source>no map is shown</source>
        <translation>keine Karte wird angezeigt</translation>
    </message>
    <message>
        <source>the list of documents has %1 entries, expected 0</source>
        <translation>die Liste der Dokumente hat %1 Einträge, erwartet 0</translation>
    </message>
    <message>
        <source>the history has %1 entries, expected 0</source>
        <translation>der Verlauf hat %1 Einträge, erwartet 0</translation>
    </message>
    <message>
        <source>tarq-terrain: there is no language &quot;%1&quot;; there are: %2
</source>
        <translation>tarq-terrain: Die Sprache „%1“ gibt es nicht; es gibt: %2
</translation>
    </message>
    <message>
        <source>tarq-terrain: there is no display to show a window on; --batch needs none
</source>
        <translation>tarq-terrain: Es gibt keinen Bildschirm für ein Fenster; --batch braucht keinen
</translation>
    </message>
    <message>
        <source>inches</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>feet</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>miles</source>
        <translation>Meilen</translation>
    </message>
    <message>
        <source>kilometres</source>
        <translation>Kilometer</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>milliseconds</source>
        <translation>Millisekunden</translation>
    </message>
    <message>
        <source>decimetres</source>
        <translation>Dezimeter</translation>
    </message>
    <message>
        <source>metres</source>
        <translation>Meter</translation>
    </message>
    <message>
        <source>metre</source>
        <translation>Meter</translation>
    </message>
    <message>
        <source>foot</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>US survey foot</source>
        <translation>US-Vermessungsfuß</translation>
    </message>
    <message>
        <source>degree</source>
        <translation>Grad</translation>
    </message>
    <message>
        <source>Cannot write &quot;%1&quot;: there is no triangulation. Triangulate first</source>
        <translation>„%1“ kann nicht geschrieben werden: Es gibt keine Triangulation. Triangulieren Sie zuerst</translation>
    </message>
    <message>
        <source>Triangles need three cells with data beside and below each other; there are none</source>
        <translation>Dreiecke brauchen drei Zellen mit Daten neben- und untereinander; es gibt keine</translation>
    </message>
    <message>
        <source>There is not enough memory for more than %1 vertices. With a larger tolerance there are fewer</source>
        <translation>Der Speicher reicht nicht für mehr als %1 Eckpunkte. Mit einer größeren Toleranz sind es weniger</translation>
    </message>
    <message>
        <source>The triangulation went wrong: %1</source>
        <translation>Die Triangulation ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>triangulation</source>
        <translation>Triangulation</translation>
    </message>
    <message>
        <source>%1 vertices, %2 triangles, tolerance %3</source>
        <translation>%1 Eckpunkte, %2 Dreiecke, Toleranz %3</translation>
    </message>
    <message>
        <source>Tri&amp;angulation</source>
        <translation>Tri&amp;angulation</translation>
    </message>
    <message>
        <source>Show or hide the edges of the triangulation</source>
        <translation>Kanten der Triangulation zeigen oder verbergen</translation>
    </message>
    <message>
        <source>&amp;Map</source>
        <translation>Kar&amp;te</translation>
    </message>
    <message>
        <source>Show the map</source>
        <translation>Die Karte zeigen</translation>
    </message>
    <message>
        <source>&amp;3D View</source>
        <translation>&amp;3D-Ansicht</translation>
    </message>
    <message>
        <source>Show the terrain in three dimensions</source>
        <translation>Das Gelände räumlich zeigen</translation>
    </message>
    <message>
        <source>Show the map and the terrain in three dimensions, side by side</source>
        <translation>Karte und räumliches Gelände nebeneinander zeigen</translation>
    </message>
    <message>
        <source>Go around the terrain</source>
        <translation>Um das Gelände kreisen</translation>
    </message>
    <message>
        <source>&amp;Fly</source>
        <translation>&amp;Fliegen</translation>
    </message>
    <message>
        <source>Fly through the terrain</source>
        <translation>Durch das Gelände fliegen</translation>
    </message>
    <message>
        <source>Exaggerate the heights more</source>
        <translation>Die Höhen stärker überhöhen</translation>
    </message>
    <message>
        <source>Exaggerate the heights less</source>
        <translation>Die Höhen weniger überhöhen</translation>
    </message>
    <message>
        <source>3D view: drag to turn, with Shift to move</source>
        <translation>3D-Ansicht: Ziehen dreht, mit Umschalt verschiebt es</translation>
    </message>
    <message>
        <source>3D view: drag to move</source>
        <translation>3D-Ansicht: Ziehen verschiebt</translation>
    </message>
    <message>
        <source>3D view: double-click to go to a place</source>
        <translation>3D-Ansicht: Doppelklick führt zu einem Ort</translation>
    </message>
    <message>
        <source>Click on a line of the History to go to that state</source>
        <translation>Klick auf eine Zeile des Verlaufs führt zu diesem Stand</translation>
    </message>
    <message>
        <source>3D view: look north, and back</source>
        <translation>3D-Ansicht: nach Norden sehen, und zurück</translation>
    </message>
    <message>
        <source>Flying: forward, with S back, with A and D aside</source>
        <translation>Fliegen: vorwärts, mit S zurück, mit A und D seitwärts</translation>
    </message>
    <message>
        <source>Flying: up, with Page Down down</source>
        <translation>Fliegen: aufwärts, mit Bild ab abwärts</translation>
    </message>
    <message>
        <source>Usage: tarq-terrain [FILE...]
       tarq-terrain --batch SCRIPT [FILE...]
       tarq-terrain --tour DIR [FILE]
       tarq-terrain --help | --version
       tarq-terrain --language LANG ...

Shows the elevation rasters FILE... in a window.

With --language in front of all else it speaks LANG: de (German), en (English) or pseudo (for
tests: other letters, from right to left). Without it the window and this text speak the
language of the system, batch and tour English.

With --tour it leads through the window by itself, with FILE or with a sample that it makes,
and leaves pictures and a list of them, tour.json, in the folder DIR.

With --batch it shows nothing, and needs no display: it opens FILE..., then carries out the
lines of SCRIPT (&quot;-&quot;: of the standard input) on the raster that was opened last:

  open FILE        opens a raster
  smooth R         mean over the cells around each one, up to R cells away
  fill-sinks       fills hollows up to where water would flow out of them
  clamp LO HI      brings heights into the range from LO to HI
  scale F          multiplies heights by F
  crop C1 C2 R1 R2 keeps the columns from C1 to C2 and the rows from R1 to R2, counted from 0
  resample F [M]   makes cells F times as wide and high, from 0.1 to 10; by the method M:
                   nearest, bilinear or average (bilinear)
  triangulate T    makes a surface of triangles from which no height is further away than T
  clean-up         clamps to what occurs on the Earth, fills sinks, smooths by 1
  raise C R A H    raises the cells up to A cells away from column C and row R, by H there and
                   smoothly less around; the centre of the first cell is at 0.5 and 0.5
  lower C R A H    lowers them
  flatten H C R... gives the cells in the polygon with corners at the columns C and rows R the
                   height H, or their mean height (&quot;mean&quot;)
  undo [N]         undoes the last N commands (1)
  redo [N]         redoes the last N undone commands (1)
  info             prints facts about the raster, and a checksum of its cells
  export FILE [D]  writes the raster as GeoTIFF (FILE.tif) or ASCII grid (FILE.asc), or its
                   contour lines, D apart, as GeoPackage (FILE.gpkg), or its triangulation as
                   FILE.ply, FILE.obj, FILE.off or FILE.stl

Empty lines and what follows a &quot;#&quot; are passed over; names with blanks stand in double
quotes.

Exit status: 0 all was done, 1 something failed (the rest of a script or a tour was not
carried out), 2 wrong usage, 130 interrupted.
</source>
        <translation>Aufruf: tarq-terrain [DATEI...]
        tarq-terrain --batch SKRIPT [DATEI...]
        tarq-terrain --tour ORDNER [DATEI]
        tarq-terrain --help | --version
        tarq-terrain --language SPRACHE ...

Zeigt die Höhenraster DATEI... in einem Fenster.

Mit --language vor allem anderen spricht es SPRACHE: de (Deutsch), en (Englisch) oder pseudo (für
Tests: andere Buchstaben, von rechts nach links). Ohne diese Option haben Fenster und dieser Text
die Sprache des Systems, Stapelverarbeitung und Vorführung Englisch.

Mit --tour führt es das Fenster selbst vor, mit DATEI oder einem Beispiel, das es erzeugt,
und hinterlässt Bilder und eine Liste davon, tour.json, im Ordner ORDNER.

Mit --batch zeigt es nichts und braucht keinen Bildschirm: Es öffnet DATEI..., dann führt es die
Zeilen von SKRIPT („-“: der Standardeingabe) mit dem zuletzt geöffneten Raster aus:

  open DATEI       öffnet ein Raster
  smooth R         Mittelwert der Zellen um jede Zelle, bis zu R Zellen entfernt
  fill-sinks       füllt Hohlformen bis dorthin auf, wo Wasser abflösse
  clamp LO HI      bringt Höhen in den Bereich von LO bis HI
  scale F          multipliziert Höhen mit F
  crop C1 C2 R1 R2 behält die Spalten C1 bis C2 und die Zeilen R1 bis R2, von 0 an gezählt
  resample F [M]   macht Zellen F-mal so breit und hoch, von 0.1 bis 10; mit dem Verfahren M:
                   nearest, bilinear oder average (bilinear)
  triangulate T    macht eine Fläche aus Dreiecken, von der keine Höhe weiter als T entfernt ist
  clean-up         begrenzt auf das, was auf der Erde vorkommt, füllt Senken, glättet um 1
  raise C R A H    hebt die Zellen bis zu A Zellen um Spalte C und Zeile R an, dort um H und
                   ringsum allmählich weniger; die Mitte der ersten Zelle liegt bei 0.5 und 0.5
  lower C R A H    senkt sie ab
  flatten H C R... gibt den Zellen im Polygon mit Ecken an den Spalten C und Zeilen R die
                   Höhe H oder ihre mittlere Höhe („mean“)
  undo [N]         macht die letzten N Befehle rückgängig (1)
  redo [N]         stellt die letzten N rückgängig gemachten Befehle wieder her (1)
  info             druckt Angaben über das Raster und eine Prüfsumme seiner Zellen
  export DATEI [D] schreibt das Raster als GeoTIFF (DATEI.tif) oder ASCII-Raster (DATEI.asc) oder seine
                   Höhenlinien im Abstand D als GeoPackage (DATEI.gpkg) oder seine Triangulation als
                   DATEI.ply, DATEI.obj, DATEI.off oder DATEI.stl

Leere Zeilen und was auf ein „#“ folgt, werden übergangen; Namen mit Leerzeichen stehen in
doppelten Anführungszeichen.

Rückgabewert: 0 alles ausgeführt, 1 etwas ist fehlgeschlagen (der Rest eines Skripts oder einer
Vorführung wurde nicht ausgeführt), 2 falscher Aufruf, 130 unterbrochen.
</translation>
    </message>
    <message>
        <source>Mo&amp;ve the Map</source>
        <translation>Karte &amp;verschieben</translation>
    </message>
    <message>
        <source>Move the map with the mouse</source>
        <translation>Die Karte mit der Maus verschieben</translation>
    </message>
    <message>
        <source>Raise the terrain with a brush</source>
        <translation>Das Gelände mit einem Pinsel anheben</translation>
    </message>
    <message>
        <source>&amp;Lower</source>
        <translation>&amp;Absenken</translation>
    </message>
    <message>
        <source>Lower the terrain with a brush</source>
        <translation>Das Gelände mit einem Pinsel absenken</translation>
    </message>
    <message>
        <source>Draw a polygon and give its cells one height</source>
        <translation>Ein Polygon zeichnen und seinen Zellen eine gemeinsame Höhe geben</translation>
    </message>
    <message>
        <source>Raise, Lower: drag to draw a stroke</source>
        <translation>Anheben, Absenken: Ziehen zeichnet einen Strich</translation>
    </message>
    <message>
        <source>Raise, Lower: with Ctrl, the radius of the brush</source>
        <translation>Anheben, Absenken: mit Strg Radius des Pinsels</translation>
    </message>
    <message>
        <source>Flatten: click for corners, double-click to close the polygon</source>
        <translation>Einebnen: Klick setzt Ecken, Doppelklick schließt das Polygon</translation>
    </message>
    <message>
        <source>With a tool: drag to move the map</source>
        <translation>Mit einem Werkzeug: Ziehen verschiebt die Karte</translation>
    </message>
    <message>
        <source>Raise, Lower: smaller brush, with ] a larger one</source>
        <translation>Anheben, Absenken: kleinerer Pinsel, mit ] ein größerer</translation>
    </message>
    <message>
        <source>Flatten: close the polygon</source>
        <translation>Einebnen: Polygon schließen</translation>
    </message>
    <message>
        <source>Flatten: take the last corner back</source>
        <translation>Einebnen: letzte Ecke zurücknehmen</translation>
    </message>
    <message>
        <source>Give up a stroke or a polygon</source>
        <translation>Strich oder Polygon verwerfen</translation>
    </message>
    <message>
        <source>Triangulation as PLY</source>
        <translation>Triangulation als PLY</translation>
    </message>
    <message>
        <source>Triangulation as OBJ</source>
        <translation>Triangulation als OBJ</translation>
    </message>
    <message>
        <source>Triangulation as OFF</source>
        <translation>Triangulation als OFF</translation>
    </message>
    <message>
        <source>Triangulation as STL</source>
        <translation>Triangulation als STL</translation>
    </message>
    <message>
        <source>Ra&amp;ise</source>
        <translation>An&amp;heben</translation>
    </message>
    <message>
        <source>Flatte&amp;n a Polygon</source>
        <translation>&amp;Polygon einebnen</translation>
    </message>
    <message>
        <source>Both &amp;Views</source>
        <translation>Do&amp;ppelansicht</translation>
    </message>
    <message>
        <source>Or&amp;bit</source>
        <translation>Gel&amp;ände umkreisen</translation>
    </message>
    <message>
        <source>E&amp;xaggerate More</source>
        <translation>Stärker überh&amp;öhen</translation>
    </message>
    <message>
        <source>&amp;Exaggerate Less</source>
        <translation>&amp;Weniger überhöhen</translation>
    </message>
    <message>
        <source>the number is %1, expected %2</source>
        <translation>die Zahl ist %1, erwartet %2</translation>
    </message>
    <message>
        <source>the raster has %1 cells, fewer than %2</source>
        <translation>das Raster hat %1 Zellen, weniger als %2</translation>
    </message>
    <message>
        <source>the menu is shown</source>
        <translation>das Menü wird angezeigt</translation>
    </message>
    <message>
        <source>all entries can be chosen</source>
        <translation>alle Einträge lassen sich wählen</translation>
    </message>
    <message>
        <source>all entries have pictures</source>
        <translation>alle Einträge haben Bilder</translation>
    </message>
    <message>
        <source>there are %1 triangles</source>
        <translation>es gibt %1 Dreiecke</translation>
    </message>
    <message>
        <source>the map shows the edges</source>
        <translation>die Karte zeigt die Kanten</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has %2 bytes</source>
        <translation>„%1“ hat %2 Byte</translation>
    </message>
    <message>
        <source>&quot;%1&quot; holds the heights exactly</source>
        <translation>„%1“ enthält die Höhen exakt</translation>
    </message>
    <message>
        <source>there is a dialog for the file</source>
        <translation>es gibt einen Dialog für die Datei</translation>
    </message>
    <message>
        <source>the file</source>
        <translation>die Datei</translation>
    </message>
    <message>
        <source>the title says that there are no changes</source>
        <translation>der Titel sagt, dass es keine Änderungen gibt</translation>
    </message>
    <message>
        <source>there is a question</source>
        <translation>es gibt eine Frage</translation>
    </message>
    <message>
        <source>the question &quot;%1&quot; names the file</source>
        <translation>die Frage „%1“ nennt die Datei</translation>
    </message>
    <message>
        <source>the history shows that %1 commands are done</source>
        <translation>der Verlauf zeigt, dass %1 Befehle ausgeführt sind</translation>
    </message>
    <message>
        <source>the history is shown</source>
        <translation>der Verlauf wird angezeigt</translation>
    </message>
    <message>
        <source>the heights are not those of the file</source>
        <translation>die Höhen sind nicht die der Datei</translation>
    </message>
    <message>
        <source>the heights are those that were triangulated</source>
        <translation>die Höhen sind die, die trianguliert wurden</translation>
    </message>
    <message>
        <source>the triangles are back</source>
        <translation>die Dreiecke sind wieder da</translation>
    </message>
    <message>
        <source>the views are those that were chosen</source>
        <translation>die Ansichten sind die gewählten</translation>
    </message>
    <message>
        <source>the map is where it is wanted</source>
        <translation>die Karte ist da, wo sie gewünscht ist</translation>
    </message>
    <message>
        <source>there is a view in three dimensions</source>
        <translation>es gibt eine 3D-Ansicht</translation>
    </message>
    <message>
        <source>there is no OpenGL here, as the view says</source>
        <translation>hier gibt es kein OpenGL, wie die Ansicht sagt</translation>
    </message>
    <message>
        <source>the terrain is drawn</source>
        <translation>das Gelände ist gezeichnet</translation>
    </message>
    <message>
        <source>it has a surface</source>
        <translation>es hat eine Oberfläche</translation>
    </message>
    <message>
        <source>one looks from another side</source>
        <translation>man sieht von einer anderen Seite</translation>
    </message>
    <message>
        <source>the relief is higher</source>
        <translation>das Relief ist höher</translation>
    </message>
    <message>
        <source>the triangles are the surface</source>
        <translation>die Dreiecke sind die Oberfläche</translation>
    </message>
    <message>
        <source>no stroke waits</source>
        <translation>kein Strich wartet</translation>
    </message>
    <message>
        <source>the options of the brush are shown</source>
        <translation>die Optionen des Pinsels werden angezeigt</translation>
    </message>
    <message>
        <source>the polygon has %1 corners, expected 5</source>
        <translation>das Polygon hat %1 Ecken, erwartet 5</translation>
    </message>
    <message>
        <source>the tool is put away</source>
        <translation>das Werkzeug ist weggelegt</translation>
    </message>
</context>
<context>
    <name>terrain::AnimationPreferences</name>
    <message>
        <source>Animation</source>
        <translation>Animation</translation>
    </message>
    <message>
        <source>Films</source>
        <translation>Filme</translation>
    </message>
    <message>
        <source>For components that make films. This program makes none and does not use this.</source>
        <translation>Für Komponenten, die Filme erzeugen. Dieses Programm erzeugt keine und verwendet dies nicht.</translation>
    </message>
    <message>
        <source>&amp;FFmpeg program:</source>
        <translation>&amp;FFmpeg-Programm:</translation>
    </message>
    <message>
        <source>Where the program FFmpeg is, which joins pictures to a film. Leave this empty if you have none.</source>
        <translation>Wo das Programm FFmpeg liegt, das Bilder zu einem Film verbindet. Lassen Sie dies leer, wenn Sie es nicht haben.</translation>
    </message>
</context>
<context>
    <name>terrain::AreaCommand</name>
    <message>
        <source>The result in column %1 and row %2 is too large for a number</source>
        <translation>Das Ergebnis in Spalte %1 und Zeile %2 ist zu groß für eine Zahl</translation>
    </message>
    <message>
        <source>1 cell changed</source>
        <translation>1 Zelle geändert</translation>
    </message>
    <message>
        <source>%1 cells changed</source>
        <translation>%1 Zellen geändert</translation>
    </message>
</context>
<context>
    <name>terrain::Batch</name>
    <message>
        <source>error log: </source>
        <translation>Fehlerprotokoll: </translation>
    </message>
    <message>
        <source>the standard output cannot be written</source>
        <translation>die Standardausgabe kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Cannot read the script &quot;%1&quot;</source>
        <translation>Das Skript „%1“ kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>there is no instruction &quot;%1&quot;</source>
        <translation>es gibt keine Anweisung „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has %2 arguments</source>
        <translation>„%1“ hat %2 Argumente</translation>
    </message>
    <message>
        <source>too few</source>
        <translation>zu wenige</translation>
    </message>
    <message>
        <source>too many</source>
        <translation>zu viele</translation>
    </message>
    <message>
        <source>undone</source>
        <translation>rückgängig gemacht:</translation>
    </message>
    <message>
        <source>redone</source>
        <translation>wiederhergestellt:</translation>
    </message>
    <message>
        <source>only contour lines have an interval</source>
        <translation>nur Höhenlinien haben einen Abstand</translation>
    </message>
    <message>
        <source>the interval between contour lines must be above 0</source>
        <translation>der Abstand der Höhenlinien muss größer als 0 sein</translation>
    </message>
    <message>
        <source>no raster is open</source>
        <translation>kein Raster ist geöffnet</translation>
    </message>
    <message>
        <source>%1 %2 of %3</source>
        <translation>%1 %2 von %3</translation>
    </message>
    <message>
        <source>a fatal error has ended the batch; see the error log</source>
        <translation>ein schwerwiegender Fehler hat die Stapelverarbeitung beendet; siehe Fehlerprotokoll</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>the last corner has no row</source>
        <translation>die letzte Ecke hat keine Zeile</translation>
    </message>
</context>
<context>
    <name>terrain::BrushBar</name>
    <message>
        <source>Radius:</source>
        <translation>Radius:</translation>
    </message>
    <message>
        <source>cells</source>
        <translation>Zellen</translation>
    </message>
    <message>
        <source>How far the brush reaches from its middle</source>
        <translation>Wie weit der Pinsel von seiner Mitte reicht</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>How much a stroke raises or lowers in the middle of the brush</source>
        <translation>Um wie viel ein Strich in der Mitte des Pinsels anhebt oder absenkt</translation>
    </message>
</context>
<context>
    <name>terrain::BrushCommand</name>
    <message>
        <source>Raise</source>
        <translation>Anheben</translation>
    </message>
    <message>
        <source>Lower</source>
        <translation>Absenken</translation>
    </message>
    <message>
        <source>radius %1, height %2</source>
        <translation>Radius %1, Höhe %2</translation>
    </message>
    <message>
        <source>%1; 1 stroke</source>
        <translation>%1; 1 Strich</translation>
    </message>
    <message>
        <source>%1; %2 strokes</source>
        <translation>%1; %2 Striche</translation>
    </message>
    <message>
        <source>The radius must be from %1 to %2 cells</source>
        <translation>Der Radius muss zwischen %1 und %2 Zellen liegen</translation>
    </message>
    <message>
        <source>The height of the brush must be above 0</source>
        <translation>Die Höhe des Pinsels muss größer als 0 sein</translation>
    </message>
    <message>
        <source>The stroke leads nowhere</source>
        <translation>Der Strich führt nirgendwohin</translation>
    </message>
</context>
<context>
    <name>terrain::BrushTool</name>
    <message>
        <source>The stroke was given up.</source>
        <translation>Der Strich wurde verworfen.</translation>
    </message>
</context>
<context>
    <name>terrain::ChangedFiles</name>
    <message>
        <source>&quot;%1&quot; has changed on disk.</source>
        <translation>„%1“ hat sich auf dem Datenträger geändert.</translation>
    </message>
    <message>
        <source>%1 Reloading loses your changes.</source>
        <translation>%1 Beim Neuladen gehen Ihre Änderungen verloren.</translation>
    </message>
    <message>
        <source>Changed File</source>
        <translation>Geänderte Datei</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Keep Mine</source>
        <translation>Meine behalten</translation>
    </message>
</context>
<context>
    <name>terrain::ClampCommand</name>
    <message>
        <source>Clamp</source>
        <translation>Begrenzen</translation>
    </message>
    <message>
        <source>The lower bound is above the upper one</source>
        <translation>Die untere Grenze liegt über der oberen</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
</context>
<context>
    <name>terrain::CleanUpCommand</name>
    <message>
        <source>Clean up</source>
        <translation>Bereinigen</translation>
    </message>
</context>
<context>
    <name>terrain::Closing</name>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>A command is running. Wait until it has ended, or cancel it.</source>
        <translation>Ein Befehl läuft. Warten Sie, bis er beendet ist, oder brechen Sie ihn ab.</translation>
    </message>
</context>
<context>
    <name>terrain::CommandsPresentation</name>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Smooth…</source>
        <translation>&amp;Glätten…</translation>
    </message>
    <message>
        <source>Mean over the cells around each one</source>
        <translation>Mittelwert der Zellen um jede Zelle</translation>
    </message>
    <message>
        <source>&amp;Fill Sinks</source>
        <translation>&amp;Senken füllen</translation>
    </message>
    <message>
        <source>Fill hollows up to where water would flow out of them</source>
        <translation>Hohlformen bis dorthin auffüllen, wo Wasser abflösse</translation>
    </message>
    <message>
        <source>&amp;Clamp…</source>
        <translation>&amp;Begrenzen…</translation>
    </message>
    <message>
        <source>Bring heights into a range</source>
        <translation>Höhen in einen Bereich bringen</translation>
    </message>
    <message>
        <source>Sc&amp;ale…</source>
        <translation>S&amp;kalieren…</translation>
    </message>
    <message>
        <source>Multiply heights by a factor</source>
        <translation>Höhen mit einem Faktor multiplizieren</translation>
    </message>
    <message>
        <source>Cro&amp;p…</source>
        <translation>&amp;Zuschneiden…</translation>
    </message>
    <message>
        <source>Keep some columns and rows only</source>
        <translation>Nur einige Spalten und Zeilen behalten</translation>
    </message>
    <message>
        <source>&amp;Resample…</source>
        <translation>&amp;Neu abtasten…</translation>
    </message>
    <message>
        <source>Make the cells larger or smaller</source>
        <translation>Die Zellen größer oder kleiner machen</translation>
    </message>
    <message>
        <source>Clean &amp;Up</source>
        <translation>B&amp;ereinigen</translation>
    </message>
    <message>
        <source>Clamp to what occurs on the Earth, fill sinks, smooth</source>
        <translation>Auf das begrenzen, was auf der Erde vorkommt, Senken füllen, glätten</translation>
    </message>
    <message>
        <source>Smooth</source>
        <translation>Glätten</translation>
    </message>
    <message>
        <source>&amp;Radius:</source>
        <translation>&amp;Radius:</translation>
    </message>
    <message>
        <source>cells</source>
        <translation>Zellen</translation>
    </message>
    <message>
        <source>Clamp</source>
        <translation>Begrenzen</translation>
    </message>
    <message>
        <source>&amp;Lowest height:</source>
        <translation>&amp;Niedrigste Höhe:</translation>
    </message>
    <message>
        <source>&amp;Highest height:</source>
        <translation>&amp;Höchste Höhe:</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Skalieren</translation>
    </message>
    <message>
        <source>&amp;Factor:</source>
        <translation>&amp;Faktor:</translation>
    </message>
    <message>
        <source>A command is running. Wait until it has ended, or cancel it.</source>
        <translation>Ein Befehl läuft. Warten Sie, bis er beendet ist, oder brechen Sie ihn ab.</translation>
    </message>
    <message>
        <source>%1: done</source>
        <translation>%1: fertig</translation>
    </message>
    <message>
        <source>%1: cancelled</source>
        <translation>%1: abgebrochen</translation>
    </message>
    <message>
        <source>%1: failed</source>
        <translation>%1: fehlgeschlagen</translation>
    </message>
    <message>
        <source>&amp;Triangulate…</source>
        <translation>&amp;Triangulieren…</translation>
    </message>
    <message>
        <source>Make a surface of triangles that follows the heights</source>
        <translation>Eine Fläche aus Dreiecken erzeugen, die den Höhen folgt</translation>
    </message>
    <message>
        <source>Triangulate</source>
        <translation>Triangulieren</translation>
    </message>
    <message>
        <source>&amp;Tolerance:</source>
        <translation>&amp;Toleranz:</translation>
    </message>
    <message>
        <source>No cell with data lies in the polygon.</source>
        <translation>Im Polygon liegt keine Zelle mit Daten.</translation>
    </message>
    <message>
        <source>Flatten</source>
        <translation>Einebnen</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
</context>
<context>
    <name>terrain::CropCommand</name>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>The first column is behind the last one</source>
        <translation>Die erste Spalte liegt hinter der letzten</translation>
    </message>
    <message>
        <source>The first row is behind the last one</source>
        <translation>Die erste Zeile liegt hinter der letzten</translation>
    </message>
    <message>
        <source>The raster has no cells</source>
        <translation>Das Raster hat keine Zellen</translation>
    </message>
    <message>
        <source>The raster has the columns 0 to %1</source>
        <translation>Das Raster hat die Spalten 0 bis %1</translation>
    </message>
    <message>
        <source>The raster has the rows 0 to %1</source>
        <translation>Das Raster hat die Zeilen 0 bis %1</translation>
    </message>
    <message>
        <source>columns %1 to %2, rows %3 to %4</source>
        <translation>Spalten %1 bis %2, Zeilen %3 bis %4</translation>
    </message>
</context>
<context>
    <name>terrain::CropDialog</name>
    <message>
        <source>&amp;First column:</source>
        <translation>&amp;Erste Spalte:</translation>
    </message>
    <message>
        <source>&amp;Last column:</source>
        <translation>&amp;Letzte Spalte:</translation>
    </message>
    <message>
        <source>First &amp;row:</source>
        <translation>Erste &amp;Zeile:</translation>
    </message>
    <message>
        <source>Last ro&amp;w:</source>
        <translation>Letzte Ze&amp;ile:</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>Crop to &amp;data</source>
        <translation>Auf &amp;Daten zuschneiden</translation>
    </message>
    <message>
        <source>%1 × %2 of %3 × %4 cells are kept.</source>
        <translation>%1 × %2 von %3 × %4 Zellen bleiben.</translation>
    </message>
    <message>
        <source>No cell has data.</source>
        <translation>Keine Zelle hat Daten.</translation>
    </message>
</context>
<context>
    <name>terrain::DocumentBox</name>
    <message>
        <source>The open documents</source>
        <translation>Die offenen Dokumente</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
</context>
<context>
    <name>terrain::DocumentFiles</name>
    <message>
        <source>%1: cancelled</source>
        <translation>%1: abgebrochen</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not written: the document is an overview of it, and would take its place</source>
        <translation>„%1“ wird nicht geschrieben: Das Dokument ist eine Übersicht davon und träte an seine Stelle</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not written: %2</source>
        <translation>„%1“ wird nicht geschrieben: %2</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>There are no changes to save</source>
        <translation>Es gibt keine Änderungen zu speichern</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not written: only GeoTIFF holds all there is, so the name must end in &quot;.tif&quot;</source>
        <translation>„%1“ wird nicht geschrieben: Nur GeoTIFF nimmt alles auf, daher muss der Name auf „.tif“ enden</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is busy. Wait until the running command has ended, or cancel it.</source>
        <translation>„%1“ ist beschäftigt. Warten Sie, bis der laufende Befehl beendet ist, oder brechen Sie ihn ab.</translation>
    </message>
</context>
<context>
    <name>terrain::FileProgressBar</name>
    <message>
        <source>Progress of the file</source>
        <translation>Fortschritt der Datei</translation>
    </message>
    <message>
        <source>Stop reading or writing the file (Esc)</source>
        <translation>Lesen oder Schreiben der Datei abbrechen (Esc)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Wird abgebrochen…</translation>
    </message>
</context>
<context>
    <name>terrain::FillSinksCommand</name>
    <message>
        <source>Fill sinks</source>
        <translation>Senken füllen</translation>
    </message>
</context>
<context>
    <name>terrain::FindBar</name>
    <message>
        <source>Find in this page</source>
        <translation>Auf dieser Seite suchen</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>terrain::FlattenCommand</name>
    <message>
        <source>Flatten</source>
        <translation>Einebnen</translation>
    </message>
    <message>
        <source>A corner of the polygon is not a number</source>
        <translation>Eine Ecke des Polygons ist keine Zahl</translation>
    </message>
    <message>
        <source>A polygon needs three corners that are not on a line</source>
        <translation>Ein Polygon braucht drei Ecken, die nicht auf einer Linie liegen</translation>
    </message>
    <message>
        <source>%1 corners</source>
        <translation>%1 Ecken</translation>
    </message>
    <message>
        <source>height %1, %2</source>
        <translation>Höhe %1, %2</translation>
    </message>
    <message>
        <source>mean height, %1</source>
        <translation>mittlere Höhe, %1</translation>
    </message>
    <message>
        <source>The height is not a number</source>
        <translation>Die Höhe ist keine Zahl</translation>
    </message>
    <message>
        <source>No cell lies in the polygon</source>
        <translation>Im Polygon liegt keine Zelle</translation>
    </message>
    <message>
        <source>No cell with data lies in the polygon</source>
        <translation>Im Polygon liegt keine Zelle mit Daten</translation>
    </message>
</context>
<context>
    <name>terrain::GeneralPreferences</name>
    <message>
        <source>Three buttons</source>
        <translation>Drei Tasten</translation>
    </message>
    <message>
        <source>Left selects, middle moves, right turns the view. On maps, where there is nothing to select, left moves too.</source>
        <translation>Links wählt aus, Mitte verschiebt, rechts dreht die Ansicht. Auf Karten, wo es nichts auszuwählen gibt, verschiebt auch links.</translation>
    </message>
    <message>
        <source>Two buttons</source>
        <translation>Zwei Tasten</translation>
    </message>
    <message>
        <source>Left selects, right turns the view, left with %1 moves it. On maps, where there is nothing to select, left moves without %1 too.</source>
        <translation>Links wählt aus, rechts dreht die Ansicht, links mit %1 verschiebt sie. Auf Karten, wo es nichts auszuwählen gibt, verschiebt links auch ohne %1.</translation>
    </message>
    <message>
        <source>Left button navigates</source>
        <translation>Linke Taste navigiert</translation>
    </message>
    <message>
        <source>Left turns the view, right moves it, left with %1 selects. On maps, which do not turn, left moves too.</source>
        <translation>Links dreht die Ansicht, rechts verschiebt sie, links mit %1 wählt aus. Auf Karten, die sich nicht drehen, verschiebt auch links.</translation>
    </message>
    <message>
        <source>Not specified</source>
        <translation>Keine Angabe</translation>
    </message>
    <message>
        <source>Mining</source>
        <translation>Bergbau</translation>
    </message>
    <message>
        <source>Oil and gas</source>
        <translation>Erdöl und Erdgas</translation>
    </message>
    <message>
        <source>Geothermal energy</source>
        <translation>Geothermie</translation>
    </message>
    <message>
        <source>Groundwater</source>
        <translation>Grundwasser</translation>
    </message>
    <message>
        <source>Civil engineering</source>
        <translation>Bauwesen</translation>
    </message>
    <message>
        <source>Environment</source>
        <translation>Umwelt</translation>
    </message>
    <message>
        <source>Research and teaching</source>
        <translation>Forschung und Lehre</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Mouse, Help and Network</source>
        <translation>Maus, Hilfe und Netzwerk</translation>
    </message>
    <message>
        <source>&amp;Mouse:</source>
        <translation>&amp;Maus:</translation>
    </message>
    <message>
        <source>Which mouse button does what in maps and other views.</source>
        <translation>Welche Maustaste in Karten und anderen Ansichten was bewirkt.</translation>
    </message>
    <message>
        <source>Show help in the &amp;web browser</source>
        <translation>Hilfe im &amp;Webbrowser anzeigen</translation>
    </message>
    <message>
        <source>Pages of the help are shown by your web browser; otherwise in a window of this program.</source>
        <translation>Seiten der Hilfe zeigt Ihr Webbrowser, sonst ein Fenster dieses Programms.</translation>
    </message>
    <message>
        <source>Use the system&apos;s &amp;proxy settings</source>
        <translation>&amp;Proxy-Einstellungen des Systems verwenden</translation>
    </message>
    <message>
        <source>What this program loads from the network goes through the proxy that is set for the whole computer; otherwise it goes directly.</source>
        <translation>Was dieses Programm aus dem Netz lädt, läuft über den Proxy, der für den ganzen Rechner eingestellt ist, sonst direkt.</translation>
    </message>
    <message>
        <source>Objects</source>
        <translation>Objekte</translation>
    </message>
    <message>
        <source>For components that list objects. This program, which has none, does not use these.</source>
        <translation>Für Komponenten, die Objekte auflisten. Dieses Programm hat keine und verwendet dies nicht.</translation>
    </message>
    <message>
        <source>Show &amp;eyes beside visible objects</source>
        <translation>&amp;Augen neben sichtbaren Objekten zeigen</translation>
    </message>
    <message>
        <source>In lists of objects, an eye tells whether an object is visible.</source>
        <translation>In Objektlisten zeigt ein Auge, ob ein Objekt sichtbar ist.</translation>
    </message>
    <message>
        <source>Show the &amp;numbers of objects</source>
        <translation>&amp;Nummern von Objekten zeigen</translation>
    </message>
    <message>
        <source>The name of an object is followed by its number.</source>
        <translation>Auf den Namen eines Objekts folgt seine Nummer.</translation>
    </message>
    <message>
        <source>Show &amp;hidden attributes</source>
        <translation>&amp;Verborgene Attribute zeigen</translation>
    </message>
    <message>
        <source>Attributes that are meant for the program itself are listed with the others.</source>
        <translation>Attribute, die für das Programm selbst bestimmt sind, werden mit den anderen aufgelistet.</translation>
    </message>
    <message>
        <source>&amp;Industry sector:</source>
        <translation>&amp;Branche:</translation>
    </message>
    <message>
        <source>What you work on. Components may choose what they offer first by it.</source>
        <translation>Woran Sie arbeiten. Komponenten können danach wählen, was sie zuerst anbieten.</translation>
    </message>
    <message>
        <source>This Session Only</source>
        <translation>Nur diese Sitzung</translation>
    </message>
    <message>
        <source>For the same components. Each start of the program switches the first on and the others off.</source>
        <translation>Für dieselben Komponenten. Jeder Programmstart schaltet das erste ein und die anderen aus.</translation>
    </message>
    <message>
        <source>Give new objects &amp;unique names</source>
        <translation>Neuen Objekten &amp;eindeutige Namen geben</translation>
    </message>
    <message>
        <source>A new object whose name is taken gets a number behind it. On again at the next start.</source>
        <translation>Ein neues Objekt, dessen Name vergeben ist, bekommt eine Nummer dahinter. Beim nächsten Start wieder ein.</translation>
    </message>
    <message>
        <source>Choose the &amp;toolbox automatically</source>
        <translation>Werkzeugkasten au&amp;tomatisch wählen</translation>
    </message>
    <message>
        <source>The toolbox that fits what you do comes to the front by itself. Off again at the next start.</source>
        <translation>Der Werkzeugkasten, der zu Ihrer Arbeit passt, kommt von selbst nach vorn. Beim nächsten Start wieder aus.</translation>
    </message>
    <message>
        <source>Use optimized &amp;flow paths</source>
        <translation>Optimierte &amp;Fließwege verwenden</translation>
    </message>
    <message>
        <source>Paths of flowing water are optimized. Off again at the next start.</source>
        <translation>Die Wege fließenden Wassers werden optimiert. Beim nächsten Start wieder aus.</translation>
    </message>
    <message>
        <source>Num&amp;ber objects anew when a file is opened</source>
        <translation>&amp;Objekte beim Öffnen einer Datei neu nummerieren</translation>
    </message>
    <message>
        <source>The objects of a file get new numbers instead of those it was written with. Off again at the next start.</source>
        <translation>Die Objekte einer Datei bekommen neue Nummern statt derer, mit denen sie geschrieben wurde. Beim nächsten Start wieder aus.</translation>
    </message>
</context>
<context>
    <name>terrain::HelpWindow</name>
    <message>
        <source>Page of the help</source>
        <translation>Seite der Hilfe</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vorwärts</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>Kleiner</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>Größer</translation>
    </message>
    <message>
        <source>Normal Size</source>
        <translation>Normale Größe</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Weitersuchen</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rückwärts suchen</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Open in Web Browser</source>
        <translation>Im Webbrowser öffnen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Navigation</source>
        <translation>Navigation</translation>
    </message>
    <message>
        <source>%1 Help</source>
        <translation>Hilfe zu %1</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
    <message>
        <source>Opens in another program: %1</source>
        <translation>Öffnet sich in einem anderen Programm: %1</translation>
    </message>
    <message>
        <source>No web browser was found that opens this page.</source>
        <translation>Kein Webbrowser gefunden, der diese Seite öffnet.</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Not on this page</source>
        <translation>Nicht auf dieser Seite</translation>
    </message>
</context>
<context>
    <name>terrain::HistogramPlot</name>
    <message>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
    <message>
        <source>Share (%)</source>
        <translation>Anteil (%)</translation>
    </message>
</context>
<context>
    <name>terrain::HistoryModel</name>
    <message>
        <source>Wait until the running command has ended</source>
        <translation>Warten Sie, bis der laufende Befehl beendet ist</translation>
    </message>
    <message>
        <source>This is the present state</source>
        <translation>Das ist der jetzige Stand</translation>
    </message>
    <message>
        <source>Undo 1 step</source>
        <translation>1 Schritt rückgängig machen</translation>
    </message>
    <message>
        <source>Redo 1 step</source>
        <translation>1 Schritt wiederherstellen</translation>
    </message>
    <message numerus="yes">
        <source>Undo %n steps</source>
        <translation>
            <numerusform>%n Schritt rückgängig machen</numerusform>
            <numerusform>%n Schritte rückgängig machen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Redo %n steps</source>
        <translation>
            <numerusform>%n Schritt wiederherstellen</numerusform>
            <numerusform>%n Schritte wiederherstellen</numerusform>
        </translation>
    </message>
    <message>
        <source>Present state: %1</source>
        <translation>Jetziger Stand: %1</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <translation>Rückgängig gemacht: %1</translation>
    </message>
</context>
<context>
    <name>terrain::HistoryPanel</name>
    <message>
        <source>%1 more can be redone</source>
        <translation>%1 weitere können wiederhergestellt werden</translation>
    </message>
    <message>
        <source>%1 older commands are not listed</source>
        <translation>%1 ältere Befehle sind nicht aufgelistet</translation>
    </message>
    <message>
        <source>Opened</source>
        <translation>Geöffnet</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>What was done</source>
        <translation>Was getan wurde</translation>
    </message>
</context>
<context>
    <name>terrain::HomePanel</name>
    <message>
        <source>No document is open.</source>
        <translation>Kein Dokument ist geöffnet.</translation>
    </message>
    <message>
        <source>Current document</source>
        <translation>Aktuelles Dokument</translation>
    </message>
    <message>
        <source>The open documents</source>
        <translation>Die offenen Dokumente</translation>
    </message>
    <message>
        <source>About the current document</source>
        <translation>Über das aktuelle Dokument</translation>
    </message>
</context>
<context>
    <name>terrain::LayersPanel</name>
    <message>
        <source>Layers</source>
        <translation>Ebenen</translation>
    </message>
    <message>
        <source>Colours of &amp;heights</source>
        <translation>&amp;Höhenfarben</translation>
    </message>
    <message>
        <source>Without them the map is grey</source>
        <translation>Ohne sie ist die Karte grau</translation>
    </message>
    <message>
        <source>&amp;Relief</source>
        <translation>&amp;Schummerung</translation>
    </message>
    <message>
        <source>Light and shadow, with the light in the north-west</source>
        <translation>Licht und Schatten, mit Licht aus Nordwest</translation>
    </message>
    <message>
        <source>C&amp;ontour lines</source>
        <translation>Höhen&amp;linien</translation>
    </message>
    <message>
        <source>Lines of equal height</source>
        <translation>Linien gleicher Höhe</translation>
    </message>
    <message>
        <source>&amp;Legend</source>
        <translation>L&amp;egende</translation>
    </message>
    <message>
        <source>What the colours mean, at the upper right</source>
        <translation>Was die Farben bedeuten, oben rechts</translation>
    </message>
    <message>
        <source>&amp;Scale bar</source>
        <translation>&amp;Maßstabsleiste</translation>
    </message>
    <message>
        <source>How long things are, at the lower left</source>
        <translation>Wie lang etwas ist, unten links</translation>
    </message>
    <message>
        <source>Interval of the contour lines</source>
        <translation>Abstand der Höhenlinien</translation>
    </message>
    <message>
        <source>The height from one line to the next; 0 for one that suits the heights</source>
        <translation>Die Höhe von einer Linie zur nächsten; 0 für einen Abstand, der zu den Höhen passt</translation>
    </message>
    <message>
        <source>automatic</source>
        <translation>automatisch</translation>
    </message>
    <message>
        <source>&amp;Interval:</source>
        <translation>&amp;Abstand:</translation>
    </message>
    <message>
        <source>No document is open.</source>
        <translation>Kein Dokument ist geöffnet.</translation>
    </message>
    <message>
        <source>The map cannot be drawn like this: %1</source>
        <translation>Die Karte kann so nicht gezeichnet werden: %1</translation>
    </message>
    <message>
        <source>Tri&amp;angulation</source>
        <translation>Tri&amp;angulation</translation>
    </message>
    <message>
        <source>The edges of the triangles, if there are any</source>
        <translation>Die Kanten der Dreiecke, falls es welche gibt</translation>
    </message>
</context>
<context>
    <name>terrain::MainMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
</context>
<context>
    <name>terrain::MainWindow</name>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Geschrieben: %1</translation>
    </message>
    <message>
        <source>%1[*] (overview) - %2</source>
        <translation>%1[*] (Übersicht) - %2</translation>
    </message>
    <message>
        <source>%1[*] - %2</source>
        <translation>%1[*] - %2</translation>
    </message>
</context>
<context>
    <name>terrain::MapStatus</name>
    <message>
        <source>Place under the pointer</source>
        <translation>Ort unter dem Mauszeiger</translation>
    </message>
    <message>
        <source>Pixels for a cell, in percent</source>
        <translation>Bildpunkte je Zelle, in Prozent</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>terrain::MapTool</name>
    <message>
        <source>The raster has no heights to draw on.</source>
        <translation>Das Raster hat keine Höhen, auf denen man zeichnen könnte.</translation>
    </message>
</context>
<context>
    <name>terrain::MapTools</name>
    <message>
        <source>1 stroke was not carried out</source>
        <translation>1 Strich wurde nicht ausgeführt</translation>
    </message>
    <message>
        <source>%1 strokes were not carried out</source>
        <translation>%1 Striche wurden nicht ausgeführt</translation>
    </message>
    <message>
        <source>The document was closed.</source>
        <translation>Das Dokument wurde geschlossen.</translation>
    </message>
    <message>
        <source>A command changes the raster; what was being drawn is given up.</source>
        <translation>Ein Befehl ändert das Raster; was gezeichnet wurde, wird verworfen.</translation>
    </message>
</context>
<context>
    <name>terrain::PanelPlot</name>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Height (%1)</source>
        <translation>Höhe (%1)</translation>
    </message>
</context>
<context>
    <name>terrain::PanelTabBar</name>
    <message>
        <source>Drag a tab away to see its panel in a window of its own</source>
        <translation>Ziehen Sie einen Reiter weg, um sein Bedienfeld in einem eigenen Fenster zu sehen</translation>
    </message>
</context>
<context>
    <name>terrain::PerformancePreferences</name>
    <message>
        <source>Performance</source>
        <translation>Leistung</translation>
    </message>
    <message>
        <source>Computing</source>
        <translation>Rechnen</translation>
    </message>
    <message>
        <source>For components that compute in the background. The commands of this program always run beside the window, and do not use this.</source>
        <translation>Für Komponenten, die im Hintergrund rechnen. Die Befehle dieses Programms laufen immer neben dem Fenster und verwenden dies nicht.</translation>
    </message>
    <message>
        <source>&amp;Compute in the background</source>
        <translation>Im &amp;Hintergrund rechnen</translation>
    </message>
    <message>
        <source>Computations may run in the background as long as the computer has room for more of them. Otherwise the program waits for each.</source>
        <translation>Berechnungen dürfen im Hintergrund laufen, solange der Rechner Platz für weitere hat. Sonst wartet das Programm auf jede.</translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>For components with 3D views and seismic sections. This program has none and does not use these.</source>
        <translation>Für Komponenten mit 3D-Ansichten und seismischen Profilen. Dieses Programm hat keine und verwendet dies nicht.</translation>
    </message>
    <message>
        <source>&amp;Draw with several threads</source>
        <translation>Mit mehreren &amp;Threads zeichnen</translation>
    </message>
    <message>
        <source>Views are drawn by threads of their own. Switch this off if your graphics has trouble with it.</source>
        <translation>Ansichten werden von eigenen Threads gezeichnet. Schalten Sie dies ab, wenn Ihre Grafik damit Probleme hat.</translation>
    </message>
    <message>
        <source>Seismic &amp;quality:</source>
        <translation>Seismische &amp;Qualität:</translation>
    </message>
    <message>
        <source>How finely seismic sections are drawn. Finer takes longer.</source>
        <translation>Wie fein seismische Profile gezeichnet werden. Feiner dauert länger.</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Niedrig</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>the processor does the work of the graphics</source>
        <translation>der Prozessor die Arbeit der Grafik übernimmt</translation>
    </message>
    <message>
        <source>drawing with shaders is off, see Viewer</source>
        <translation>das Zeichnen mit Shadern aus ist, siehe Anzeige</translation>
    </message>
    <message>
        <source>In use: %1, since %2.</source>
        <translation>In Gebrauch: %1, weil %2.</translation>
    </message>
</context>
<context>
    <name>terrain::PolygonTool</name>
    <message>
        <source>The polygon was given up.</source>
        <translation>Das Polygon wurde verworfen.</translation>
    </message>
</context>
<context>
    <name>terrain::ProfilePlot</name>
    <message>
        <source>Distance (m)</source>
        <translation>Entfernung (m)</translation>
    </message>
    <message>
        <source>Distance (km)</source>
        <translation>Entfernung (km)</translation>
    </message>
    <message>
        <source>Distance (cells)</source>
        <translation>Entfernung (Zellen)</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
</context>
<context>
    <name>terrain::ProgramChooser</name>
    <message>
        <source>Give the whole path, from the root folder on.</source>
        <translation>Geben Sie den ganzen Pfad an, vom Wurzelverzeichnis an.</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Diese Datei gibt es nicht.</translation>
    </message>
    <message>
        <source>This is a folder, not a program.</source>
        <translation>Das ist ein Ordner, kein Programm.</translation>
    </message>
    <message>
        <source>This file is no program that you may run.</source>
        <translation>Diese Datei ist kein Programm, das Sie ausführen dürfen.</translation>
    </message>
    <message>
        <source>&amp;Browse…</source>
        <translation>&amp;Durchsuchen…</translation>
    </message>
    <message>
        <source>Look for the program</source>
        <translation>Das Programm suchen</translation>
    </message>
</context>
<context>
    <name>terrain::ProgressPresentation</name>
    <message>
        <source>Progress of the running command</source>
        <translation>Fortschritt des laufenden Befehls</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel the running command</source>
        <translation>Den laufenden Befehl abbrechen</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Wird abgebrochen…</translation>
    </message>
</context>
<context>
    <name>terrain::QuickHelpPanel</name>
    <message>
        <source>Quick Help</source>
        <translation>Kurzhilfe</translation>
    </message>
    <message>
        <source>The quick help cannot be shown: %1</source>
        <translation>Die Kurzhilfe kann nicht angezeigt werden: %1</translation>
    </message>
</context>
<context>
    <name>terrain::RasterCommand</name>
    <message>
        <source>There is not enough memory for the result</source>
        <translation>Der Speicher reicht für das Ergebnis nicht aus</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>height and unit</comment>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>terrain::RecentFiles</name>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
</context>
<context>
    <name>terrain::RecentMenu</name>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
</context>
<context>
    <name>terrain::ResampleCommand</name>
    <message>
        <source>Resample</source>
        <translation>Neu abtasten</translation>
    </message>
    <message>
        <source>The raster has no cells</source>
        <translation>Das Raster hat keine Zellen</translation>
    </message>
    <message>
        <source>The factor must be from %1 to %2</source>
        <translation>Der Faktor muss zwischen %1 und %2 liegen</translation>
    </message>
    <message>
        <source>Averages are for larger cells: the factor must not be below 1</source>
        <translation>Mittelwerte gibt es nur für größere Zellen: Der Faktor darf nicht kleiner als 1 sein</translation>
    </message>
    <message>
        <source>The result would have %1 x %2 cells; more than %3 million are not possible</source>
        <translation>Das Ergebnis hätte %1 x %2 Zellen; mehr als %3 Millionen sind nicht möglich</translation>
    </message>
    <message>
        <source>The result would have %1 x %2 cells and need %3 GB of memory; %4 GB may be used</source>
        <translation>Das Ergebnis hätte %1 x %2 Zellen und bräuchte %3 GB Speicher; %4 GB dürfen belegt werden</translation>
    </message>
    <message>
        <source>The result in column %1 and row %2 is too large for a number</source>
        <translation>Das Ergebnis in Spalte %1 und Zeile %2 ist zu groß für eine Zahl</translation>
    </message>
    <message>
        <source>factor %1, %2</source>
        <translation>Faktor %1, %2</translation>
    </message>
    <message>
        <source>nearest</source>
        <translation>nächste Zelle</translation>
    </message>
    <message>
        <source>bilinear</source>
        <translation>bilinear</translation>
    </message>
    <message>
        <source>average</source>
        <translation>Mittelwert</translation>
    </message>
</context>
<context>
    <name>terrain::ResampleDialog</name>
    <message>
        <source>%1 × %2</source>
        <translation>%1 × %2</translation>
    </message>
    <message>
        <source>&amp;Factor:</source>
        <translation>&amp;Faktor:</translation>
    </message>
    <message>
        <source>Cell &amp;size:</source>
        <translation>&amp;Zellengröße:</translation>
    </message>
    <message>
        <source>Cell &amp;width:</source>
        <translation>Zellen&amp;breite:</translation>
    </message>
    <message>
        <source>&amp;Method:</source>
        <translation>&amp;Verfahren:</translation>
    </message>
    <message>
        <source>Nearest cell</source>
        <translation>Nächste Zelle</translation>
    </message>
    <message>
        <source>Bilinear</source>
        <translation>Bilinear</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Mittelwert</translation>
    </message>
    <message>
        <source>Resample</source>
        <translation>Neu abtasten</translation>
    </message>
    <message>
        <source>%1 cells become %2.</source>
        <translation>Aus %1 Zellen werden %2.</translation>
    </message>
    <message>
        <source>Each one measures %1 × %2 %3.</source>
        <translation>Jede misst %1 × %2 %3.</translation>
    </message>
</context>
<context>
    <name>terrain::ReshapeCommand</name>
    <message>
        <source>nothing changed</source>
        <translation>nichts geändert</translation>
    </message>
    <message>
        <source>%1 x %2</source>
        <translation>%1 x %2</translation>
    </message>
    <message>
        <source>%1 cells became %2</source>
        <translation>aus %1 Zellen wurden %2</translation>
    </message>
</context>
<context>
    <name>terrain::ScaleCommand</name>
    <message>
        <source>Scale</source>
        <translation>Skalieren</translation>
    </message>
    <message>
        <source>factor %1</source>
        <translation>Faktor %1</translation>
    </message>
</context>
<context>
    <name>terrain::SceneBar</name>
    <message>
        <source>E&amp;xaggeration:</source>
        <translation>Über&amp;höhung:</translation>
    </message>
    <message>
        <source>Vertical exaggeration</source>
        <translation>Überhöhung</translation>
    </message>
    <message>
        <source>How many times higher than wide the terrain is drawn</source>
        <translation>Um wie viel das Gelände höher als breit gezeichnet wird</translation>
    </message>
    <message>
        <source>×</source>
        <comment>times</comment>
        <translation>×</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Exaggerate the heights so that the relief shows</source>
        <translation>Die Höhen so überhöhen, dass sich das Relief zeigt</translation>
    </message>
</context>
<context>
    <name>terrain::SceneCanvas</name>
    <message>
        <source>3D view</source>
        <translation>3D-Ansicht</translation>
    </message>
    <message>
        <source>Dragging turns, the wheel zooms; with the keyboard, arrow keys turn, plus and minus zoom</source>
        <translation>Ziehen dreht, das Mausrad zoomt; auf der Tastatur drehen die Pfeiltasten, Plus und Minus zoomen</translation>
    </message>
</context>
<context>
    <name>terrain::SceneOverlay</name>
    <message>
        <source>N</source>
        <comment>north</comment>
        <translation>N</translation>
    </message>
</context>
<context>
    <name>terrain::SceneView</name>
    <message>
        <source>3D view</source>
        <translation>3D-Ansicht</translation>
    </message>
    <message>
        <source>This view needs OpenGL 2, which there is not on this screen.
The map works without it.</source>
        <translation>Diese Ansicht braucht OpenGL 2, das es auf diesem Bildschirm nicht gibt.
Die Karte funktioniert ohne.</translation>
    </message>
    <message>
        <source>There are no heights to show.</source>
        <translation>Es gibt keine Höhen zu zeigen.</translation>
    </message>
    <message>
        <source>vertical exaggeration %1×</source>
        <translation>Überhöhung %1×</translation>
    </message>
    <message>
        <source>heights not to scale, %1×</source>
        <translation>Höhen nicht maßstäblich, %1×</translation>
    </message>
</context>
<context>
    <name>terrain::SettingsPage</name>
    <message>
        <source>Other (%1)</source>
        <translation>Andere (%1)</translation>
    </message>
    <message>
        <source>&amp;Restore Defaults</source>
        <translation>Vo&amp;rgaben wiederherstellen</translation>
    </message>
    <message>
        <source>Enters what all settings of this page were at first. Apply makes them so.</source>
        <translation>Trägt ein, was alle Einstellungen dieser Seite anfangs waren. Mit „Anwenden“ gelten sie.</translation>
    </message>
</context>
<context>
    <name>terrain::SmoothCommand</name>
    <message>
        <source>Smooth</source>
        <translation>Glätten</translation>
    </message>
    <message>
        <source>The radius must be at least 1</source>
        <translation>Der Radius muss mindestens 1 sein</translation>
    </message>
    <message>
        <source>radius %1</source>
        <translation>Radius %1</translation>
    </message>
</context>
<context>
    <name>terrain::StartPage</name>
    <message>
        <source>Open one with %1, or drop files here.</source>
        <translation>Öffnen Sie eines mit %1, oder legen Sie Dateien hier ab.</translation>
    </message>
    <message>
        <source>No raster is open</source>
        <translation>Kein Raster ist geöffnet</translation>
    </message>
    <message>
        <source>Or open one of these again:</source>
        <translation>Oder öffnen Sie eines von diesen erneut:</translation>
    </message>
</context>
<context>
    <name>terrain::StatisticsPanel</name>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>No document is open.</source>
        <translation>Kein Dokument ist geöffnet.</translation>
    </message>
    <message>
        <source>Heights</source>
        <translation>Höhen</translation>
    </message>
    <message>
        <source>Cells</source>
        <translation>Zellen</translation>
    </message>
    <message>
        <source>Without data</source>
        <translation>Ohne Daten</translation>
    </message>
    <message>
        <source>Lowest</source>
        <translation>Niedrigste</translation>
    </message>
    <message>
        <source>Highest</source>
        <translation>Höchste</translation>
    </message>
    <message>
        <source>Mean</source>
        <translation>Mittelwert</translation>
    </message>
    <message>
        <source>Median</source>
        <translation>Median</translation>
    </message>
    <message>
        <source>Std. deviation</source>
        <translation>Standardabw.</translation>
    </message>
    <message>
        <source>Standard deviation</source>
        <translation>Standardabweichung</translation>
    </message>
    <message>
        <source>Standard deviation of all heights, not an estimate from a part of them</source>
        <translation>Standardabweichung aller Höhen, keine Schätzung aus einem Teil von ihnen</translation>
    </message>
    <message>
        <source>Distribution</source>
        <translation>Verteilung</translation>
    </message>
    <message>
        <source>These heights cannot be drawn.</source>
        <translation>Diese Höhen lassen sich nicht zeichnen.</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>Row</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Direction of the profile</source>
        <translation>Richtung des Profils</translation>
    </message>
    <message>
        <source>A row is drawn from left to right, a column from the top down</source>
        <translation>Eine Zeile wird von links nach rechts gezeichnet, eine Spalte von oben nach unten</translation>
    </message>
    <message>
        <source>Number of the row or column</source>
        <translation>Nummer der Zeile oder Spalte</translation>
    </message>
    <message>
        <source>The row or column of the profile; a click on the map chooses it too</source>
        <translation>Die Zeile oder Spalte des Profils; ein Klick auf die Karte wählt sie auch</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Counting…</source>
        <translation>Wird gezählt…</translation>
    </message>
    <message>
        <source>The raster has no heights.</source>
        <translation>Das Raster hat keine Höhen.</translation>
    </message>
    <message>
        <source>There is not enough memory to count the heights.</source>
        <translation>Der Speicher reicht nicht aus, um die Höhen zu zählen.</translation>
    </message>
    <message>
        <source>Heights in %1</source>
        <translation>Höhen in %1</translation>
    </message>
    <message>
        <source>Click on the map, or choose a number, for a profile.</source>
        <translation>Für ein Profil klicken Sie auf die Karte oder wählen Sie eine Nummer.</translation>
    </message>
    <message>
        <source>No heights here.</source>
        <translation>Hier sind keine Höhen.</translation>
    </message>
    <message>
        <source>Column %1, row %2: %3</source>
        <translation>Spalte %1, Zeile %2: %3</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>keine Daten</translation>
    </message>
</context>
<context>
    <name>terrain::TerrainQuickHelp</name>
    <message>
        <source>Open an elevation raster to see its relief.</source>
        <translation>Öffnen Sie ein Höhenraster, um sein Relief zu sehen.</translation>
    </message>
</context>
<context>
    <name>terrain::TerrainView</name>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
</context>
<context>
    <name>terrain::Tour</name>
    <message>
        <source>the window was closed before the end of the tour</source>
        <translation>das Fenster wurde vor dem Ende der Vorführung geschlossen</translation>
    </message>
    <message>
        <source>a dialog appeared: %1</source>
        <translation>ein Dialog erschien: %1</translation>
    </message>
    <message>
        <source>the picture is not uniform</source>
        <translation>das Bild ist nicht einfarbig</translation>
    </message>
    <message>
        <source>not seen: %1</source>
        <translation>nicht gesehen: %1</translation>
    </message>
    <message>
        <source>%1 of %2 pictures of the tour are in %3</source>
        <translation>%1 von %2 Bildern der Vorführung sind in %3</translation>
    </message>
    <message>
        <source>after the last step</source>
        <translation>nach dem letzten Schritt</translation>
    </message>
    <message>
        <source>step %1, %2</source>
        <translation>Schritt %1, %2</translation>
    </message>
    <message>
        <source>all steps</source>
        <translation>alle Schritte</translation>
    </message>
</context>
<context>
    <name>terrain::TriangulateCommand</name>
    <message>
        <source>Triangulate</source>
        <translation>Triangulieren</translation>
    </message>
    <message>
        <source>The tolerance must be a number above 0</source>
        <translation>Die Toleranz muss eine Zahl größer als 0 sein</translation>
    </message>
    <message>
        <source>%1 triangles</source>
        <translation>%1 Dreiecke</translation>
    </message>
    <message>
        <source>cells left out: %1</source>
        <translation>ausgelassene Zellen: %1</translation>
    </message>
    <message>
        <source>tolerance %1</source>
        <translation>Toleranz %1</translation>
    </message>
</context>
<context>
    <name>terrain::ViewerPreferences</name>
    <message>
        <source>Viewer</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Maps and Other Views</source>
        <translation>Karten und andere Ansichten</translation>
    </message>
    <message>
        <source>&amp;Background:</source>
        <translation>&amp;Hintergrund:</translation>
    </message>
    <message>
        <source>The colour around the terrain, and where there is no data. Maps change at once.</source>
        <translation>Die Farbe um das Gelände herum und dort, wo Daten fehlen. Karten ändern sich sofort.</translation>
    </message>
    <message>
        <source>&amp;Average cells when zoomed out</source>
        <translation>Beim Verkleinern Zellen &amp;mitteln</translation>
    </message>
    <message>
        <source>Where many cells share a point of the screen, it shows their mean. Otherwise it shows one of them, which is faster. Maps change at once.</source>
        <translation>Wo sich viele Zellen einen Bildpunkt teilen, zeigt er ihren Mittelwert. Sonst zeigt er eine von ihnen, was schneller ist. Karten ändern sich sofort.</translation>
    </message>
    <message>
        <source>Animate &amp;zooming and moving</source>
        <translation>&amp;Zoomen und Verschieben animieren</translation>
    </message>
    <message>
        <source>Keys and menus let the view glide to its new place, so that you see where it goes. Otherwise it jumps. Maps follow at once.</source>
        <translation>Tasten und Menüs lassen die Ansicht an ihren neuen Ort gleiten, sodass Sie den Weg sehen. Sonst springt sie. Karten folgen sofort.</translation>
    </message>
    <message>
        <source>Selected Objects</source>
        <translation>Ausgewählte Objekte</translation>
    </message>
    <message>
        <source>For components with objects to select. The maps of this program have none and do not use these.</source>
        <translation>Für Komponenten mit auswählbaren Objekten. Die Karten dieses Programms haben keine und verwenden dies nicht.</translation>
    </message>
    <message>
        <source>&amp;Highlight colour:</source>
        <translation>Her&amp;vorhebungsfarbe:</translation>
    </message>
    <message>
        <source>The colour of selected objects.</source>
        <translation>Die Farbe ausgewählter Objekte.</translation>
    </message>
    <message>
        <source>Draw &amp;selected objects in this colour</source>
        <translation>Aus&amp;gewählte Objekte in dieser Farbe zeichnen</translation>
    </message>
    <message>
        <source>Otherwise a selected object keeps its own colour and is marked in another way.</source>
        <translation>Sonst behält ein ausgewähltes Objekt seine Farbe und wird anders markiert.</translation>
    </message>
    <message>
        <source>&amp;Transparent objects stay transparent</source>
        <translation>&amp;Transparente Objekte bleiben transparent</translation>
    </message>
    <message>
        <source>The highlight of an object is as transparent as the object itself.</source>
        <translation>Die Hervorhebung eines Objekts ist so transparent wie das Objekt selbst.</translation>
    </message>
    <message>
        <source>Symbols and Labels</source>
        <translation>Symbole und Beschriftungen</translation>
    </message>
    <message>
        <source>For components that draw symbols. The maps of this program have none and do not use these.</source>
        <translation>Für Komponenten, die Symbole zeichnen. Die Karten dieses Programms haben keine und verwenden dies nicht.</translation>
    </message>
    <message>
        <source>Symbols in flat &amp;views grow with the view</source>
        <translation>Symbole in &amp;flachen Ansichten wachsen mit der Ansicht</translation>
    </message>
    <message>
        <source>Symbols have a size in metres and grow when you zoom in. Otherwise they keep their size on the screen.</source>
        <translation>Symbole haben eine Größe in Metern und wachsen beim Vergrößern. Sonst behalten sie ihre Größe am Bildschirm.</translation>
    </message>
    <message>
        <source>Symbols in &amp;3D views grow with the view</source>
        <translation>Symbole in &amp;3D-Ansichten wachsen mit der Ansicht</translation>
    </message>
    <message>
        <source>Symbols have a size in metres and grow when you come nearer. Otherwise they keep their size on the screen.</source>
        <translation>Symbole haben eine Größe in Metern und wachsen, wenn Sie näher kommen. Sonst behalten sie ihre Größe am Bildschirm.</translation>
    </message>
    <message>
        <source>&amp;Labels grow with the view</source>
        <translation>&amp;Beschriftungen wachsen mit der Ansicht</translation>
    </message>
    <message>
        <source>Labels have a size in metres and grow when you zoom in. Otherwise they keep their size on the screen.</source>
        <translation>Beschriftungen haben eine Größe in Metern und wachsen beim Vergrößern. Sonst behalten sie ihre Größe am Bildschirm.</translation>
    </message>
    <message>
        <source>3D Views</source>
        <translation>3D-Ansichten</translation>
    </message>
    <message>
        <source>Divide views into three &amp;panels</source>
        <translation>Ansichten in &amp;drei Felder teilen</translation>
    </message>
    <message>
        <source>A view has three panels in one frame. Otherwise it is undivided.</source>
        <translation>Eine Ansicht hat drei Felder in einem Rahmen. Sonst ist sie ungeteilt.</translation>
    </message>
    <message>
        <source>Draw &amp;with shaders</source>
        <translation>Mit &amp;Shadern zeichnen</translation>
    </message>
    <message>
        <source>Switch this off if your graphics has trouble with shaders. Seismic sections are then drawn at the lowest quality.</source>
        <translation>Schalten Sie dies ab, wenn Ihre Grafik mit Shadern Probleme hat. Seismische Profile werden dann in der niedrigsten Qualität gezeichnet.</translation>
    </message>
    <message>
        <source>The panels and shaders are for other components with 3D views; this program does not use them.</source>
        <translation>Felder und Shader sind für andere Komponenten mit 3D-Ansichten; dieses Programm verwendet sie nicht.</translation>
    </message>
    <message>
        <source>&amp;Open new documents with a 3D view</source>
        <translation>&amp;Neue Dokumente mit 3D-Ansicht öffnen</translation>
    </message>
    <message>
        <source>A new document shows its map and its terrain in 3D, side by side. Otherwise it shows the map. A screen without OpenGL shows the map anyway.</source>
        <translation>Ein neues Dokument zeigt seine Karte und sein Gelände in 3D nebeneinander, sonst die Karte. Ein Bildschirm ohne OpenGL zeigt in jedem Fall die Karte.</translation>
    </message>
</context>
</TS>
