<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutBox</name>
    <message>
        <source>About Tabulet</source>
        <translation>Über Tabulet</translation>
    </message>
    <message>
        <source>Tabulet %1</source>
        <translation>Tabulet %1</translation>
    </message>
    <message>
        <source>An editor for property lists.
Free software under the MIT licence, without any warranty.

With %1.</source>
        <translation>Ein Editor für Eigenschaftslisten.
Freie Software unter der MIT-Lizenz, ohne jede Gewährleistung.

Mit %1.</translation>
    </message>
</context>
<context>
    <name>AccessibleCell</name>
    <message>
        <source>Expand</source>
        <translation>Ausklappen</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>Einklappen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Shows the items inside</source>
        <translation>Zeigt die enthaltenen Elemente</translation>
    </message>
    <message>
        <source>Hides the items inside</source>
        <translation>Verbirgt die enthaltenen Elemente</translation>
    </message>
    <message>
        <source>Opens a text field</source>
        <translation>Öffnet ein Textfeld</translation>
    </message>
</context>
<context>
    <name>ByteFile</name>
    <message>
        <source>There is not enough memory.</source>
        <translation>Der Speicher reicht nicht aus.</translation>
    </message>
    <message>
        <source>It is not a regular file.</source>
        <translation>Es ist keine reguläre Datei.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>“%1” is not the address of a file on this computer.</source>
        <translation>„%1“ ist nicht die Adresse einer Datei auf diesem Rechner.</translation>
    </message>
    <message>
        <source>An editor for property lists.</source>
        <translation>Ein Editor für Eigenschaftslisten.</translation>
    </message>
    <message>
        <source>Open one file, save a screenshot of its window to &lt;path&gt;, and quit.</source>
        <translation>Eine Datei öffnen, ein Bildschirmfoto ihres Fensters unter &lt;path&gt; speichern und beenden.</translation>
    </message>
    <message>
        <source>The property lists to open.</source>
        <translation>Die zu öffnenden Eigenschaftslisten.</translation>
    </message>
    <message>
        <source>--picture needs the path of the picture and exactly one file to open.</source>
        <translation>--picture benötigt den Pfad des Bildes und genau eine Datei, die geöffnet wird.</translation>
    </message>
    <message>
        <source>No display is available: neither DISPLAY nor WAYLAND_DISPLAY is set. Start Tabulet from a desktop session.</source>
        <translation>Es ist keine Anzeige verfügbar: Weder DISPLAY noch WAYLAND_DISPLAY ist gesetzt. Starten Sie Tabulet aus einer Desktop-Sitzung.</translation>
    </message>
</context>
<context>
    <name>CrashRecovery</name>
    <message>
        <source>The file “%1” could not be restored.</source>
        <translation>Die Datei „%1“ konnte nicht wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>%1.

Its previous contents are in “%2”.</source>
        <translation>%1.

Ihr vorheriger Inhalt liegt in „%2“.</translation>
    </message>
    <message>
        <source>The folder can&apos;t be shown in a file manager.</source>
        <translation>Der Ordner kann nicht in einer Dateiverwaltung angezeigt werden.</translation>
    </message>
    <message>
        <source>The backup is in “%1”.</source>
        <translation>Die Sicherung liegt in „%1“.</translation>
    </message>
</context>
<context>
    <name>DataPopover</name>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Base64</source>
        <translation>Base64</translation>
    </message>
    <message>
        <source>This is not valid Base64.</source>
        <translation>Das ist kein gültiges Base64.</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importieren&#xa0;…</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren&#xa0;…</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Showing the bytes as Base64…</source>
        <translation>Bytes werden als Base64 angezeigt&#xa0;…</translation>
    </message>
    <message>
        <source>Applying…</source>
        <translation>Wird angewendet&#xa0;…</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Importing…</source>
        <translation>Wird importiert&#xa0;…</translation>
    </message>
    <message>
        <source>Exporting…</source>
        <translation>Wird exportiert&#xa0;…</translation>
    </message>
    <message>
        <source>%1

The data is still in the document. Export it somewhere else.</source>
        <translation>%1

Die Daten sind noch im Dokument. Exportieren Sie sie an einen anderen Ort.</translation>
    </message>
</context>
<context>
    <name>DataText</name>
    <message>
        <source>kB</source>
        <translation>kB</translation>
    </message>
    <message>
        <source>MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>GB</source>
        <translation>GB</translation>
    </message>
    <message>
        <source>TB</source>
        <translation>TB</translation>
    </message>
    <message>
        <source>PB</source>
        <translation>PB</translation>
    </message>
    <message>
        <source>EB</source>
        <translation>EB</translation>
    </message>
    <message>
        <source>Zero kB</source>
        <translation>0 kB</translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n Byte</numerusform>
            <numerusform>%n Bytes</numerusform>
        </translation>
    </message>
    <message>
        <source>Showing the first %1.</source>
        <translation>Nur die ersten %1 werden angezeigt.</translation>
    </message>
</context>
<context>
    <name>DateValueEditor</name>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
</context>
<context>
    <name>DocumentActions</name>
    <message>
        <source>“%1” is not a valid %2.</source>
        <translation>„%1“ ist kein gültiger Wert vom Typ %2.</translation>
    </message>
</context>
<context>
    <name>DocumentController</name>
    <message>
        <source>There is not enough memory.</source>
        <translation>Der Speicher reicht nicht aus.</translation>
    </message>
    <message>
        <source> (recovered)</source>
        <translation> (wiederhergestellt)</translation>
    </message>
    <message>
        <source>Revert to Saved</source>
        <translation>Auf gespeicherten Stand zurücksetzen</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
</context>
<context>
    <name>DocumentToolBar</name>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>Element hinzufügen</translation>
    </message>
    <message>
        <source>Add an item (⇧⌘N)</source>
        <translation>Ein Element hinzufügen (⇧⌘N)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete the selected items (⌫)</source>
        <translation>Die ausgewählten Elemente löschen (⌫)</translation>
    </message>
</context>
<context>
    <name>DocumentView</name>
    <message>
        <source>This file uses the old OpenStep format, which can only be read. It will be saved as XML.</source>
        <translation>Diese Datei hat das alte OpenStep-Format, das nur gelesen werden kann. Sie wird als XML gespeichert.</translation>
    </message>
    <message>
        <source>There are too many items to show at once.</source>
        <translation>Es sind zu viele Elemente, um alle gleichzeitig anzuzeigen.</translation>
    </message>
    <message>
        <source>More than %1 items would appear, because parts of this document are used in many places. Expand smaller parts instead.</source>
        <translation>Mehr als %1 Elemente würden erscheinen, weil Teile dieses Dokuments an vielen Stellen verwendet werden. Klappen Sie stattdessen kleinere Teile aus.</translation>
    </message>
</context>
<context>
    <name>DocumentWindow</name>
    <message>
        <source>Edi&amp;tor</source>
        <translation>Edi&amp;tor</translation>
    </message>
    <message>
        <source>Saving “%1”…</source>
        <translation>„%1“ wird gespeichert&#xa0;…</translation>
    </message>
    <message>
        <source>Opening “%1”…</source>
        <translation>„%1“ wird geöffnet&#xa0;…</translation>
    </message>
    <message>
        <source>Recovering “%1”…</source>
        <translation>„%1“ wird wiederhergestellt&#xa0;…</translation>
    </message>
    <message>
        <source>Unsaved changes can&apos;t be backed up: %1. Save often.</source>
        <translation>Nicht gespeicherte Änderungen können nicht gesichert werden: %1. Speichern Sie oft.</translation>
    </message>
    <message>
        <source>“%1” could not be recovered.</source>
        <translation>„%1“ konnte nicht wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>%1

The backup is in “%2”.</source>
        <translation>%1

Die Sicherung liegt in „%2“.</translation>
    </message>
    <message>
        <source>Saving “%1”… The window will close when this is done.</source>
        <translation>„%1“ wird gespeichert&#xa0;… Danach wird das Fenster geschlossen.</translation>
    </message>
    <message>
        <source>The screenshot “%1” could not be saved. %2</source>
        <translation>Das Bildschirmfoto „%1“ konnte nicht gespeichert werden. %2</translation>
    </message>
</context>
<context>
    <name>EditError</name>
    <message>
        <source>The key “%1” already exists.</source>
        <translation>Der Schlüssel „%1“ ist bereits vorhanden.</translation>
    </message>
    <message>
        <source>The root cannot be renamed, moved or deleted.</source>
        <translation>Die Wurzel kann nicht umbenannt, verschoben oder gelöscht werden.</translation>
    </message>
</context>
<context>
    <name>EditMenu</name>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederherstellen: %1</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Aus&amp;schneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>Click ＋ to add the first item.</source>
        <extracomment>The plus sign stands for the button in the toolbar.</extracomment>
        <translation>Mit ＋ das erste Element hinzufügen.</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>Property lists (*.plist *.entitlements *.xcprivacy *.stringsdict)</source>
        <translation>Eigenschaftslisten (*.plist *.entitlements *.xcprivacy *.stringsdict)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
</context>
<context>
    <name>FileError</name>
    <message>
        <source>The file “%1” could not be read.</source>
        <translation>Die Datei „%1“ konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The file “%1” is not a readable property list.</source>
        <translation>Die Datei „%1“ ist keine lesbare Eigenschaftsliste.</translation>
    </message>
    <message>
        <source>The file “%1” could not be written.</source>
        <translation>Die Datei „%1“ konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The file “%1” has been changed by another program.</source>
        <translation>Die Datei „%1“ wurde von einem anderen Programm geändert.</translation>
    </message>
    <message>
        <source>The document “%1” could not be saved.</source>
        <translation>Das Dokument „%1“ konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>It is not a regular file.</source>
        <translation>Es ist keine reguläre Datei.</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>Speichern &amp;unter&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Revert to Saved</source>
        <translation>Auf &amp;gespeicherten Stand zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Clear Menu</source>
        <translation>Liste &amp;leeren</translation>
    </message>
</context>
<context>
    <name>FileName</name>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
</context>
<context>
    <name>FileNotice</name>
    <message>
        <source>&amp;Reload</source>
        <translation>Neu &amp;laden</translation>
    </message>
    <message>
        <source>&amp;Keep Mine</source>
        <translation>&amp;Meine behalten</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>The file “%1” has been changed by another program.</source>
        <translation>Die Datei „%1“ wurde von einem anderen Programm geändert.</translation>
    </message>
    <message>
        <source>The file “%1” has been changed by another program and can no longer be read. %2</source>
        <translation>Die Datei „%1“ wurde von einem anderen Programm geändert und ist nicht mehr lesbar. %2</translation>
    </message>
    <message>
        <source>The file “%1” has been deleted or moved. Save the document to create it again.</source>
        <translation>Die Datei „%1“ wurde gelöscht oder verschoben. Speichern Sie das Dokument, um sie neu zu erstellen.</translation>
    </message>
</context>
<context>
    <name>FormatPicker</name>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>The format used when saving</source>
        <translation>Das Format beim Speichern</translation>
    </message>
    <message>
        <source>XML</source>
        <translation>XML</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>Binär</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>%1 or %2</source>
        <translation>%1 oder %2</translation>
    </message>
    <message>
        <source>Edit the key of the selected item</source>
        <translation>Den Schlüssel des ausgewählten Elements bearbeiten</translation>
    </message>
    <message>
        <source>Go from a key to its value</source>
        <translation>Vom Schlüssel zum Wert gehen</translation>
    </message>
    <message>
        <source>Choose the type of the current item</source>
        <translation>Den Typ des aktuellen Elements wählen</translation>
    </message>
    <message>
        <source>Show the context menu of the selected items</source>
        <translation>Das Kontextmenü der ausgewählten Elemente anzeigen</translation>
    </message>
    <message>
        <source>Switch the current item between true and false, or edit its date or data</source>
        <translation>Beim aktuellen Element zwischen true und false umschalten oder Datum oder Daten bearbeiten</translation>
    </message>
    <message>
        <source>Cancel editing</source>
        <translation>Bearbeitung abbrechen</translation>
    </message>
    <message>
        <source>Expand or collapse the selected items</source>
        <translation>Die ausgewählten Elemente aus- oder einklappen</translation>
    </message>
    <message>
        <source>Expand or collapse them with everything inside</source>
        <translation>Sie mit allem darin aus- oder einklappen</translation>
    </message>
    <message>
        <source>Move the selected items up or down</source>
        <translation>Die ausgewählten Elemente nach oben oder unten verschieben</translation>
    </message>
    <message>
        <source>Expand or collapse everything</source>
        <translation>Alles aus- oder einklappen</translation>
    </message>
    <message>
        <source>Delete the selected items</source>
        <translation>Die ausgewählten Elemente löschen</translation>
    </message>
    <message>
        <source>Go to the next or previous match</source>
        <translation>Zum nächsten oder vorherigen Treffer gehen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>&amp;About Tabulet</source>
        <translation>Ü&amp;ber Tabulet</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Keys that are not shown in the menus:</source>
        <translation>Tasten, die nicht in den Menüs stehen:</translation>
    </message>
    <message>
        <source>Tabulet &amp;Manual</source>
        <translation>Tabulet-&amp;Handbuch</translation>
    </message>
</context>
<context>
    <name>InlineEditing</name>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Value of %1</source>
        <translation>Wert von %1</translation>
    </message>
</context>
<context>
    <name>ItemClipboard</name>
    <message>
        <source>The clipboard&apos;s contents can&apos;t be pasted.</source>
        <translation>Der Inhalt der Zwischenablage kann nicht eingefügt werden.</translation>
    </message>
</context>
<context>
    <name>LongTextEditor</name>
    <message>
        <source>This text is read-only here: it has several kinds of line breaks or special characters, which editing it here would change.</source>
        <translation>Dieser Text ist hier schreibgeschützt: Er enthält mehrere Arten von Zeilenumbrüchen oder Sonderzeichen, die sich beim Bearbeiten ändern würden.</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Tabulet Manual</source>
        <translation>Tabulet-Handbuch</translation>
    </message>
    <message>
        <source>manual.md</source>
        <translation>manual.de.md</translation>
    </message>
</context>
<context>
    <name>MatchCount</name>
    <message numerus="yes">
        <source>%n match(es)</source>
        <translation>
            <numerusform>%n Treffer</numerusform>
            <numerusform>%n Treffer</numerusform>
        </translation>
    </message>
    <message>
        <source>More than %1 matches</source>
        <translation>Mehr als %1 Treffer</translation>
    </message>
</context>
<context>
    <name>MessageDialog</name>
    <message>
        <source>Check that the file exists and that you have permission to read it.</source>
        <translation>Prüfen Sie, ob die Datei vorhanden ist und Sie sie lesen dürfen.</translation>
    </message>
    <message>
        <source>Fix the file in a text editor, or open another copy of it. The file has not been changed.</source>
        <translation>Korrigieren Sie die Datei in einem Texteditor oder öffnen Sie eine andere Kopie. Die Datei wurde nicht verändert.</translation>
    </message>
    <message>
        <source>Your changes are still in the window. Use File &gt; Save As… to save them somewhere else.</source>
        <translation>Ihre Änderungen sind noch im Fenster. Speichern Sie sie mit „Datei &gt; Speichern unter&#xa0;…“ an einem anderen Ort.</translation>
    </message>
    <message>
        <source>Your changes are still in the window. Use File &gt; Save As… to save them under another name.</source>
        <translation>Ihre Änderungen sind noch im Fenster. Speichern Sie sie mit „Datei &gt; Speichern unter&#xa0;…“ unter einem anderen Namen.</translation>
    </message>
    <message>
        <source>Your changes are still in the window. Try saving in the other format.</source>
        <translation>Ihre Änderungen sind noch im Fenster. Versuchen Sie, im anderen Format zu speichern.</translation>
    </message>
    <message>
        <source>Discarded changes can&apos;t be recovered.</source>
        <translation>Verworfene Änderungen können nicht wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>Saving “%1” was interrupted.</source>
        <translation>Das Speichern von „%1“ wurde unterbrochen.</translation>
    </message>
    <message>
        <source>The file may contain only part of what was being saved. Its previous contents were backed up and can be restored.</source>
        <translation>Die Datei enthält möglicherweise nur einen Teil dessen, was gespeichert wurde. Ihr vorheriger Inhalt wurde gesichert und kann wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Keep Current</source>
        <translation>Aktuellen Inhalt behalten</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Ordner anzeigen</translation>
    </message>
    <message>
        <source>Do you want to save the changes to “%1”?</source>
        <translation>Möchten Sie die Änderungen an „%1“ speichern?</translation>
    </message>
    <message>
        <source>Your changes will be lost if you don&apos;t save them.</source>
        <translation>Ihre Änderungen gehen verloren, wenn Sie sie nicht speichern.</translation>
    </message>
    <message>
        <source>Overwrite replaces what is in the file now. Reload replaces what is in the window, and can be undone.</source>
        <translation>„Überschreiben“ ersetzt den jetzigen Inhalt der Datei. „Neu laden“ ersetzt den Inhalt des Fensters und kann rückgängig gemacht werden.</translation>
    </message>
    <message>
        <source>Overwrite</source>
        <translation>Überschreiben</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Speichern unter&#xa0;…</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
</context>
<context>
    <name>OutlineTableModel</name>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>OutlineView</name>
    <message>
        <source>Property list</source>
        <translation>Eigenschaftsliste</translation>
    </message>
</context>
<context>
    <name>PlistCommands</name>
    <message>
        <source>Add &amp;Item</source>
        <translation>&amp;Element hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>&amp;Duplizieren</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben verschieben</translation>
    </message>
    <message>
        <source>Move Do&amp;wn</source>
        <translation>Nach &amp;unten verschieben</translation>
    </message>
    <message>
        <source>&amp;Sort Keys</source>
        <translation>Schlüssel sor&amp;tieren</translation>
    </message>
    <message>
        <source>&amp;Expand All</source>
        <translation>&amp;Alles ausklappen</translation>
    </message>
    <message>
        <source>&amp;Collapse All</source>
        <translation>Alles ein&amp;klappen</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>&amp;Suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>&amp;Weitersuchen</translation>
    </message>
    <message>
        <source>Find Pre&amp;vious</source>
        <translation>&amp;Rückwärts suchen</translation>
    </message>
</context>
<context>
    <name>PlistEditor</name>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Change Value</source>
        <translation>Wert ändern</translation>
    </message>
    <message>
        <source>Change Type</source>
        <translation>Typ ändern</translation>
    </message>
    <message>
        <source>Change Format</source>
        <translation>Format ändern</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>Element hinzufügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Sort Keys</source>
        <translation>Schlüssel sortieren</translation>
    </message>
</context>
<context>
    <name>ProgressBar</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
</context>
<context>
    <name>ProgressPage</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>RecoverableDocument</name>
    <message>
        <source>Unknown Document</source>
        <translation>Unbekanntes Dokument</translation>
    </message>
</context>
<context>
    <name>RecoveryDialog</name>
    <message>
        <source>Never saved</source>
        <translation>Nie gespeichert</translation>
    </message>
    <message>
        <source> · Changed %1</source>
        <translation> · Geändert: %1</translation>
    </message>
    <message>
        <source>Tabulet quit unexpectedly twice while recovering it. The backup is in “%1”.</source>
        <translation>Tabulet wurde bei der Wiederherstellung zweimal unerwartet beendet. Die Sicherung liegt in „%1“.</translation>
    </message>
    <message>
        <source>Its file has changed since then, so it will open as a copy.</source>
        <translation>Die Datei wurde seitdem geändert, daher wird eine Kopie geöffnet.</translation>
    </message>
    <message>
        <source>Tabulet quit unexpectedly. These documents have unsaved changes:</source>
        <translation>Tabulet wurde unerwartet beendet. Diese Dokumente haben nicht gespeicherte Änderungen:</translation>
    </message>
    <message>
        <source>Recover Documents</source>
        <translation>Dokumente wiederherstellen</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Recover</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Discard…</source>
        <translation>Verwerfen&#xa0;…</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Ordner anzeigen</translation>
    </message>
    <message>
        <source>Do you want to discard the changes to “%1”?</source>
        <translation>Möchten Sie die Änderungen an „%1“ verwerfen?</translation>
    </message>
    <message numerus="yes">
        <source>Do you want to discard the changes to %n documents?</source>
        <translation>
            <numerusform>Möchten Sie die Änderungen an %n Dokument verwerfen?</numerusform>
            <numerusform>Möchten Sie die Änderungen an %n Dokumenten verwerfen?</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RowDropping</name>
    <message>
        <source>The dropped items can&apos;t be inserted.</source>
        <translation>Die abgelegten Elemente können nicht eingefügt werden.</translation>
    </message>
</context>
<context>
    <name>RowMenu</name>
    <message>
        <source>Add Item</source>
        <translation>Element hinzufügen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Sort Keys</source>
        <translation>Schlüssel sortieren</translation>
    </message>
    <message>
        <source>Expand All Below</source>
        <translation>Alles darunter ausklappen</translation>
    </message>
    <message>
        <source>Collapse All Below</source>
        <translation>Alles darunter einklappen</translation>
    </message>
</context>
<context>
    <name>RowText</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n Element</numerusform>
            <numerusform>%n Elemente</numerusform>
        </translation>
    </message>
    <message>
        <source>UID %1</source>
        <translation>UID %1</translation>
    </message>
    <message>
        <source>Root</source>
        <translation>Wurzel</translation>
    </message>
    <message>
        <source>Item %1</source>
        <translation>Element %1</translation>
    </message>
    <message>
        <source>Duplicate key: only one of them is used when the file is read.</source>
        <translation>Doppelter Schlüssel: Beim Lesen der Datei wird nur einer davon verwendet.</translation>
    </message>
    <message>
        <source>level %1</source>
        <translation>Ebene %1</translation>
    </message>
    <message>
        <source>expanded</source>
        <translation>ausgeklappt</translation>
    </message>
    <message>
        <source>collapsed</source>
        <translation>eingeklappt</translation>
    </message>
</context>
<context>
    <name>SafeWriter</name>
    <message>
        <source>It is not a regular file.</source>
        <translation>Es ist keine reguläre Datei.</translation>
    </message>
    <message>
        <source>You don&apos;t have permission to write to it. Save under another name, or change the permissions of the file.</source>
        <translation>Sie dürfen nicht in sie schreiben. Speichern Sie unter einem anderen Namen oder ändern Sie die Zugriffsrechte der Datei.</translation>
    </message>
    <message>
        <source>It has been left untouched.</source>
        <translation>Sie wurde nicht angetastet.</translation>
    </message>
    <message>
        <source>The file system reported success, but the file does not contain what was saved. Save it somewhere else.</source>
        <translation>Das Dateisystem hat Erfolg gemeldet, aber die Datei enthält nicht, was gespeichert wurde. Speichern Sie sie an einem anderen Ort.</translation>
    </message>
    <message>
        <source>Another program has moved or replaced it in the meantime.</source>
        <translation>Ein anderes Programm hat sie inzwischen verschoben oder ersetzt.</translation>
    </message>
    <message>
        <source>It can only be overwritten in place, and the backup needed in case that fails can&apos;t be written to “%1”: %2 Allow writing there, or free up some space.</source>
        <translation>Sie kann nur an Ort und Stelle überschrieben werden, und die Sicherung für den Fall, dass das scheitert, kann nicht nach „%1“ geschrieben werden: %2 Erlauben Sie dort das Schreiben oder schaffen Sie Platz.</translation>
    </message>
    <message>
        <source>%1 Its previous contents are in “%2”.</source>
        <translation>%1 Ihr vorheriger Inhalt liegt in „%2“.</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search keys and values</source>
        <translation>Schlüssel und Werte suchen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
</context>
<context>
    <name>TabuletApp</name>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>Untitled %1</source>
        <translation>Unbenannt %1</translation>
    </message>
</context>
<context>
    <name>TransferError</name>
    <message>
        <source>Invalid dragged items.</source>
        <translation>Ungültige gezogene Elemente.</translation>
    </message>
</context>
<context>
    <name>TypeMenu</name>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
</context>
<context>
    <name>TypeName</name>
    <message>
        <source>Dictionary</source>
        <translation>Wörterbuch</translation>
    </message>
    <message>
        <source>Array</source>
        <translation>Array</translation>
    </message>
    <message>
        <source>String</source>
        <translation>Zeichenkette</translation>
    </message>
    <message>
        <source>Integer</source>
        <translation>Ganzzahl</translation>
    </message>
    <message>
        <source>Real</source>
        <translation>Kommazahl</translation>
    </message>
    <message>
        <source>Boolean</source>
        <translation>Wahrheitswert</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>UID</source>
        <translation>UID</translation>
    </message>
</context>
<context>
    <name>WindowMenu</name>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
</context>
</TS>
