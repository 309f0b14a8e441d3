<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>KyAttributeCategory</name>
    <message>
        <source>Callstack</source>
        <translation>Aufrufliste</translation>
    </message>
    <message>
        <source>Locals</source>
        <translation>Lokale Variablen</translation>
    </message>
    <message>
        <source>Globals</source>
        <translation>Globale Variablen</translation>
    </message>
</context>
<context>
    <name>KyHostCalls</name>
    <message>
        <source>(main chunk)</source>
        <translation>(Hauptprogramm)</translation>
    </message>
    <message>
        <source>(tail call)</source>
        <translation>(Endaufruf)</translation>
    </message>
    <message>
        <source>(function)</source>
        <translation>(Funktion)</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>Calls under way; the variables are those of the one that is chosen.</source>
        <translation>Laufende Aufrufe; die Variablen sind die des gewählten.</translation>
    </message>
</context>
<context>
    <name>KyHostDebuggerWindow</name>
    <message>
        <source>breakpoint</source>
        <translation>Haltepunkt</translation>
    </message>
    <message>
        <source>step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Step over</source>
        <translation>Prozedurschritt</translation>
    </message>
    <message>
        <source>Stops at the next line, but not in functions that it calls</source>
        <translation>Hält in der nächsten Zeile, aber nicht in Funktionen, die sie aufruft</translation>
    </message>
    <message>
        <source>Step out</source>
        <translation>Rücksprung</translation>
    </message>
    <message>
        <source>Stops when the function has ended</source>
        <translation>Hält, wenn die Funktion zu Ende ist</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stops at the next line that runs</source>
        <translation>Hält in der nächsten Zeile, die ausgeführt wird</translation>
    </message>
    <message>
        <source>Breakpoint</source>
        <translation>Haltepunkt</translation>
    </message>
    <message>
        <source>Sets or takes a breakpoint at the line of the cursor</source>
        <translation>Setzt oder entfernt einen Haltepunkt in der Zeile der Einfügemarke</translation>
    </message>
    <message>
        <source>Stop at errors</source>
        <translation>Bei Fehlern halten</translation>
    </message>
    <message>
        <source>Stops where a script fails</source>
        <translation>Hält dort, wo ein Skript fehlschlägt</translation>
    </message>
    <message>
        <source>Debugger - kyhost</source>
        <translation>Debugger - kyhost</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Skript</translation>
    </message>
    <message>
        <source>Script whose text stands below</source>
        <translation>Skript, dessen Text darunter steht</translation>
    </message>
    <message>
        <source>Text of the script</source>
        <translation>Text des Skripts</translation>
    </message>
    <message>
        <source>F9 sets or takes a breakpoint at the line of the cursor.</source>
        <translation>F9 setzt oder entfernt einen Haltepunkt in der Zeile der Einfügemarke.</translation>
    </message>
    <message>
        <source>A click sets or takes a breakpoint (F9)</source>
        <translation>Ein Klick setzt oder entfernt einen Haltepunkt (F9)</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Stopped at %1:%2 (%3)</source>
        <translation>Angehalten in %1:%2 (%3)</translation>
    </message>
</context>
<context>
    <name>KyHostKeys</name>
    <message>
        <source>Keys and gestures</source>
        <translation>Tasten und Gesten</translation>
    </message>
    <message>
        <source>show the whole model</source>
        <translation>das ganze Modell zeigen</translation>
    </message>
    <message>
        <source>1 to 6</source>
        <translation>1 bis 6</translation>
    </message>
    <message>
        <source>look from front, back, right, left, above, below</source>
        <translation>Blick von vorn, hinten, rechts, links, oben, unten</translation>
    </message>
    <message>
        <source>parallel projection on and off</source>
        <translation>Parallelprojektion ein und aus</translation>
    </message>
    <message>
        <source>settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>show and hide the keys</source>
        <translation>die Tasten zeigen und verbergen</translation>
    </message>
    <message>
        <source>debugger of the scripts</source>
        <translation>Debugger der Skripte</translation>
    </message>
    <message>
        <source>write a picture into the current folder</source>
        <translation>ein Bild in den aktuellen Ordner schreiben</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>left drag, three fingers</source>
        <translation>mit links ziehen, drei Finger</translation>
    </message>
    <message>
        <source>turn the view; of three fingers one moves</source>
        <translation>die Ansicht drehen; von drei Fingern bewegt sich einer</translation>
    </message>
    <message>
        <source>middle drag, one finger</source>
        <translation>mit der Mitte ziehen, ein Finger</translation>
    </message>
    <message>
        <source>shift the view</source>
        <translation>die Ansicht verschieben</translation>
    </message>
    <message>
        <source>right drag</source>
        <translation>mit rechts ziehen</translation>
    </message>
    <message>
        <source>walk: up goes forward</source>
        <translation>gehen: nach oben geht es vorwärts</translation>
    </message>
    <message>
        <source>wheel, two fingers</source>
        <translation>Rad, zwei Finger</translation>
    </message>
    <message>
        <source>nearer and farther; two fingers turn as well</source>
        <translation>näher und weiter weg; zwei Finger drehen auch</translation>
    </message>
    <message>
        <source>Control + left drag</source>
        <translation>Strg + mit links ziehen</translation>
    </message>
    <message>
        <source>drag the object under the pointer</source>
        <translation>das Objekt unter dem Zeiger ziehen</translation>
    </message>
    <message>
        <source>show and hide how fast frames come</source>
        <translation>Bildrate und Zählwerte ein- und ausblenden</translation>
    </message>
    <message>
        <source>Tab, F6</source>
        <translation>Tab, F6</translation>
    </message>
    <message>
        <source>give the keys to a form in the view; F6 to the next one</source>
        <translation>die Tasten einem Formular in der Ansicht geben; F6 dem nächsten</translation>
    </message>
    <message>
        <source>leave the form, cancel long work, close the help, then the window</source>
        <translation>das Formular verlassen, lange Arbeit abbrechen, die Hilfe, dann das Fenster schließen</translation>
    </message>
</context>
<context>
    <name>KyHostLanguagePage</name>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>Language of windows and dialogs</source>
        <translation>Sprache der Fenster und Dialoge</translation>
    </message>
    <message>
        <source>As the system (%1)</source>
        <translation>Wie das System (%1)</translation>
    </message>
</context>
<context>
    <name>KyHostNavigationPage</name>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Navigation</source>
        <translation>Navigation</translation>
    </message>
    <message>
        <source>How fast the view follows the hand</source>
        <translation>Wie schnell die Ansicht der Hand folgt</translation>
    </message>
    <message>
        <source>Turns the direction round</source>
        <translation>Kehrt die Richtung um</translation>
    </message>
    <message>
        <source>&amp;Turn</source>
        <translation>&amp;Drehen</translation>
    </message>
    <message>
        <source>&amp;Shift</source>
        <translation>&amp;Verschieben</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>&amp;Zoomen</translation>
    </message>
    <message>
        <source>&amp;Walk</source>
        <translation>&amp;Gehen</translation>
    </message>
    <message>
        <source>&amp;Look round</source>
        <translation>&amp;Umsehen</translation>
    </message>
    <message>
        <source>The scene &amp;follows when turning</source>
        <translation>Die &amp;Szene folgt beim Drehen</translation>
    </message>
    <message>
        <source>The scene follows when wal&amp;king</source>
        <translation>Die Szene folgt &amp;beim Gehen</translation>
    </message>
    <message>
        <source>The scene follows when looking &amp;round</source>
        <translation>Die Szene &amp;folgt beim Umsehen</translation>
    </message>
</context>
<context>
    <name>KyHostProgress</name>
    <message>
        <source>Downloading, %1</source>
        <translation>Wird heruntergeladen, %1</translation>
    </message>
    <message>
        <source>%1   Esc cancels</source>
        <translation>%1   Esc bricht ab</translation>
    </message>
    <message>
        <source>Loading %1</source>
        <translation>%1 wird geladen</translation>
    </message>
    <message>
        <source>Copying %1</source>
        <translation>%1 wird kopiert</translation>
    </message>
    <message>
        <source>Deleting %1</source>
        <translation>%1 wird gelöscht</translation>
    </message>
    <message>
        <source>Unpacking %1</source>
        <translation>%1 wird entpackt</translation>
    </message>
</context>
<context>
    <name>KyHostSourceView</name>
    <message>
        <source>Line %1 has a breakpoint.</source>
        <translation>Zeile %1 hat einen Haltepunkt.</translation>
    </message>
    <message>
        <source>Line %1 has no breakpoint.</source>
        <translation>Zeile %1 hat keinen Haltepunkt.</translation>
    </message>
</context>
<context>
    <name>KyHostStatistics</name>
    <message>
        <source>frames</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>drawing</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>draw calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>nodes</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>%1/s  %2 ms, longest %3</source>
        <translation>%1/s  %2 ms, max. %3</translation>
    </message>
    <message>
        <source>%1, primitives: %2</source>
        <translation>%1, Primitive: %2</translation>
    </message>
    <message>
        <source>%1 MB, coroutines: %2</source>
        <translation>%1 MB, Koroutinen: %2</translation>
    </message>
</context>
<context>
    <name>KyHostVariables</name>
    <message>
        <source>Locals</source>
        <translation>Lokale Variablen</translation>
    </message>
    <message>
        <source>Upvalues</source>
        <translation>Variablen der umgebenden Funktionen</translation>
    </message>
    <message>
        <source>Globals</source>
        <translation>Globale Variablen</translation>
    </message>
    <message>
        <source>table of %1</source>
        <translation>Tabelle mit %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variablen</translation>
    </message>
    <message>
        <source>Right opens a table or an object, Left closes it.</source>
        <translation>Rechts öffnet eine Tabelle oder ein Objekt, Links schließt sie.</translation>
    </message>
    <message>
        <source>the rest is left out</source>
        <translation>der Rest ist ausgelassen</translation>
    </message>
</context>
<context>
    <name>KyLanguage</name>
    <message>
        <source>English</source>
        <comment>what the language of the translation calls itself</comment>
        <translation>Deutsch</translation>
    </message>
</context>
<context>
    <name>KyNetworkConnection</name>
    <message>
        <source>Connection: Busy</source>
        <translation>Verbindung: beschäftigt</translation>
    </message>
    <message>
        <source>Connection: Ready</source>
        <translation>Verbindung: bereit</translation>
    </message>
    <message>
        <source>Connection: Failed</source>
        <translation>Verbindung: gescheitert</translation>
    </message>
    <message>
        <source>Connection: Authentication required</source>
        <translation>Verbindung: Anmeldung erforderlich</translation>
    </message>
    <message>
        <source>Connection: Unkown error</source>
        <translation>Verbindung: unbekannter Fehler</translation>
    </message>
    <message>
        <source>Another download is in progress.</source>
        <translation>Ein anderer Download läuft.</translation>
    </message>
</context>
<context>
    <name>KyQAttributeEditor</name>
    <message>
        <source>&amp;Edit the value</source>
        <translation>Wert &amp;bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Undo the change of %1</source>
        <translation>Änderung von %1 &amp;rückgängig machen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Redo the change of %1</source>
        <translation>Änderung von %1 &amp;wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Shows the attributes whose names hold the text.</source>
        <translation>Zeigt die Attribute, deren Namen den Text enthalten.</translation>
    </message>
    <message>
        <source>Attributes</source>
        <translation>Attribute</translation>
    </message>
    <message>
        <source>Names and values of the object; F2 edits.</source>
        <translation>Namen und Werte des Objekts; F2 bearbeitet.</translation>
    </message>
    <message>
        <source>Sho&amp;w the whole value</source>
        <translation>Ganzen Wert an&amp;zeigen</translation>
    </message>
    <message>
        <source>&amp;Copy the value</source>
        <translation>Wert &amp;kopieren</translation>
    </message>
    <message>
        <source>Names and values of the object; F2 shows all of one, Ctrl+C copies it.</source>
        <translation>Namen und Werte des Objekts; F2 zeigt einen ganz, Strg+C kopiert ihn.</translation>
    </message>
</context>
<context>
    <name>KyQAttributeModel</name>
    <message>
        <source>none</source>
        <translation>keines</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message numerus="yes">
        <source>%n value(s)</source>
        <translation>
            <numerusform>%n Wert</numerusform>
            <numerusform>%n Werte</numerusform>
        </translation>
    </message>
    <message>
        <source>true</source>
        <translation>wahr</translation>
    </message>
    <message>
        <source>false</source>
        <translation>falsch</translation>
    </message>
</context>
<context>
    <name>KyQColorEditor</name>
    <message>
        <source>Choose a colour</source>
        <translation>Eine Farbe wählen</translation>
    </message>
</context>
<context>
    <name>KyQFieldEditor</name>
    <message>
        <source>%1, %2 of %3</source>
        <translation>%1, %2 von %3</translation>
    </message>
    <message>
        <source>Return writes, Escape takes back, Tab goes on.</source>
        <translation>Die Eingabetaste schreibt, Esc nimmt zurück, Tab geht weiter.</translation>
    </message>
</context>
<context>
    <name>KyQLuaDebuggerEditor</name>
    <message>
        <source>&amp;Resume</source>
        <translation>&amp;Fortsetzen</translation>
    </message>
    <message>
        <source>Lets the script run on</source>
        <translation>Lässt das Skript weiterlaufen</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>Einzel&amp;schritt</translation>
    </message>
    <message>
        <source>Stops at the next line</source>
        <translation>Hält in der nächsten Zeile</translation>
    </message>
</context>
<context>
    <name>KyQProxySettingsEditor</name>
    <message>
        <source>&amp;Host</source>
        <translation>&amp;Host</translation>
    </message>
    <message>
        <source>Name or address of the proxy</source>
        <translation>Name oder Adresse des Proxys</translation>
    </message>
    <message>
        <source>Port of the proxy</source>
        <translation>Port des Proxys</translation>
    </message>
    <message>
        <source>&amp;User</source>
        <translation>&amp;Benutzer</translation>
    </message>
    <message>
        <source>Where the proxy asks for a name</source>
        <translation>Falls der Proxy nach einem Namen fragt</translation>
    </message>
    <message>
        <source>Pass&amp;word</source>
        <translation>Pass&amp;wort</translation>
    </message>
    <message>
        <source>Is kept encrypted</source>
        <translation>Wird verschlüsselt aufbewahrt</translation>
    </message>
    <message>
        <source>Not for these a&amp;ddresses</source>
        <translation>Nicht für diese A&amp;dressen</translation>
    </message>
    <message>
        <source>Separated by commas, such as &quot;localhost, *.example.org&quot;</source>
        <translation>Durch Kommas getrennt, etwa „localhost, *.example.org“</translation>
    </message>
    <message>
        <source>Test addr&amp;ess</source>
        <translation>Testad&amp;resse</translation>
    </message>
    <message>
        <source>What the test of the connection reaches for</source>
        <translation>Was der Test der Verbindung zu erreichen versucht</translation>
    </message>
    <message>
        <source>The server refuses the connection.</source>
        <translation>Der Server lehnt die Verbindung ab.</translation>
    </message>
    <message>
        <source>The server closed the connection.</source>
        <translation>Der Server hat die Verbindung geschlossen.</translation>
    </message>
    <message>
        <source>The server of the test address is not known.</source>
        <translation>Der Server der Testadresse ist nicht bekannt.</translation>
    </message>
    <message>
        <source>There was no answer in time.</source>
        <translation>Es kam keine rechtzeitige Antwort.</translation>
    </message>
    <message>
        <source>The certificate of the server is not trusted.</source>
        <translation>Dem Zertifikat des Servers wird nicht vertraut.</translation>
    </message>
    <message>
        <source>The proxy refuses the connection.</source>
        <translation>Der Proxy lehnt die Verbindung ab.</translation>
    </message>
    <message>
        <source>The proxy closed the connection.</source>
        <translation>Der Proxy hat die Verbindung geschlossen.</translation>
    </message>
    <message>
        <source>The proxy is not known under this name.</source>
        <translation>Der Proxy ist unter diesem Namen nicht bekannt.</translation>
    </message>
    <message>
        <source>The proxy did not answer in time.</source>
        <translation>Der Proxy hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>The proxy does not accept the user name and the password.</source>
        <translation>Der Proxy nimmt Benutzername und Passwort nicht an.</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source>Use the proxy of the &amp;system</source>
        <translation>Den Proxy des &amp;Systems verwenden</translation>
    </message>
    <message>
        <source>Host and port are those that the system tells</source>
        <translation>Host und Port sind die, die das System nennt</translation>
    </message>
    <message>
        <source>&amp;Test connection</source>
        <translation>Verbindung &amp;testen</translation>
    </message>
    <message>
        <source>Tries to reach the test address with what the page shows</source>
        <translation>Versucht, die Testadresse mit den Angaben der Seite zu erreichen</translation>
    </message>
    <message>
        <source>Result of the test</source>
        <translation>Ergebnis des Tests</translation>
    </message>
    <message>
        <source>The host of the proxy is not the name of a host.</source>
        <translation>Der Host des Proxys ist kein Name eines Hosts.</translation>
    </message>
    <message>
        <source>The test address does not begin with http:// or https://.</source>
        <translation>Die Testadresse beginnt nicht mit http:// oder https://.</translation>
    </message>
    <message>
        <source>The test address must not name a user or password.</source>
        <translation>Die Testadresse darf weder Benutzer noch Passwort nennen.</translation>
    </message>
    <message>
        <source>The password has characters that cannot be kept.</source>
        <translation>Das Passwort enthält Zeichen, die nicht gespeichert werden können.</translation>
    </message>
    <message>
        <source>The password cannot be encrypted.</source>
        <translation>Das Passwort kann nicht verschlüsselt werden.</translation>
    </message>
    <message>
        <source>Testing ...</source>
        <translation>Test läuft ...</translation>
    </message>
    <message>
        <source>The connection works.</source>
        <translation>Die Verbindung funktioniert.</translation>
    </message>
    <message>
        <source>The connection works, but the test address answers with the status %1.</source>
        <translation>Die Verbindung funktioniert, aber die Testadresse antwortet mit dem Status %1.</translation>
    </message>
    <message>
        <source>The test address cannot be reached (error %1).</source>
        <translation>Die Testadresse ist nicht erreichbar (Fehler %1).</translation>
    </message>
    <message>
        <source>&amp;Port</source>
        <translation>&amp;Port</translation>
    </message>
</context>
<context>
    <name>KyQReferenceEditor</name>
    <message>
        <source>none</source>
        <translation>keines</translation>
    </message>
</context>
<context>
    <name>KyQSettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Chooses the page beside it.</source>
        <translation>Wählt die Seite daneben.</translation>
    </message>
    <message>
        <source>Takes over all pages and closes the settings</source>
        <translation>Übernimmt alle Seiten und schließt die Einstellungen</translation>
    </message>
    <message>
        <source>Takes over all pages</source>
        <translation>Übernimmt alle Seiten</translation>
    </message>
    <message>
        <source>Closes the settings without taking over the pages</source>
        <translation>Schließt die Einstellungen, ohne die Seiten zu übernehmen</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>Über&amp;nehmen</translation>
    </message>
</context>
<context>
    <name>KyQSettingsEditor</name>
    <message>
        <source>The settings cannot be saved in &quot;%1&quot;.</source>
        <translation>Die Einstellungen können nicht in „%1“ gespeichert werden.</translation>
    </message>
</context>
<context>
    <name>KyQUrlEditor</name>
    <message>
        <source>Choose a file</source>
        <translation>Eine Datei wählen</translation>
    </message>
</context>
<context>
    <name>KyQmlErrorsReport</name>
    <message>
        <source>Cannot be shown: 1 error</source>
        <translation>Kann nicht gezeigt werden: 1 Fehler</translation>
    </message>
    <message>
        <source>Cannot be shown: %1 errors</source>
        <translation>Kann nicht gezeigt werden: %1 Fehler</translation>
    </message>
    <message>
        <source>... and %1 more errors.</source>
        <translation>... und weitere Fehler: %1.</translation>
    </message>
    <message>
        <source>line %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
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
        <source>The root of this QML is no Item, so there is nothing to show.</source>
        <translation>Die Wurzel dieses QML ist kein Item; es gibt nichts zu zeigen.</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
</TS>
