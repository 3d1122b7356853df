<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
    <context>
        <name>DocumentPicker</name>
        <message>
            <source>Selected</source>
            <translation>Ausgewählt</translation>
        </message>
        <message>
            <source>This kind cannot be chosen here</source>
            <translation>Diese Art kann hier nicht gewählt werden</translation>
        </message>
        <message>
            <source>You may not open this</source>
            <translation>Keine Berechtigung zum Öffnen</translation>
        </message>
        <message>
            <source>Not a document</source>
            <translation>Kein Dokument</translation>
        </message>
    </context>
    <context>
        <name>DocumentPlaces</name>
        <message>
            <source>Home</source>
            <translation>Persönlicher Ordner</translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>Dokumente</translation>
        </message>
        <message>
            <source>Downloads</source>
            <translation>Downloads</translation>
        </message>
        <message>
            <source>Pictures</source>
            <translation>Bilder</translation>
        </message>
        <message>
            <source>Music</source>
            <translation>Musik</translation>
        </message>
        <message>
            <source>Videos</source>
            <translation>Videos</translation>
        </message>
        <message>
            <source>Desktop</source>
            <translation>Schreibtisch</translation>
        </message>
        <message>
            <source>This device</source>
            <translation>Dieses Gerät</translation>
        </message>
    </context>
    <context>
        <name>FileName</name>
        <message>
            <source>(unnamed)</source>
            <translation>(ohne Namen)</translation>
        </message>
    </context>
    <context>
        <name>FileSaving</name>
        <message>
            <source>Enter a name.</source>
            <translation>Geben Sie einen Namen ein.</translation>
        </message>
        <message>
            <source>A name cannot contain a slash.</source>
            <translation>Ein Name kann keinen Schrägstrich enthalten.</translation>
        </message>
        <message>
            <source>This name is not possible here.</source>
            <translation>Dieser Name ist hier nicht möglich.</translation>
        </message>
        <message>
            <source>This name is too long.</source>
            <translation>Dieser Name ist zu lang.</translation>
        </message>
        <message>
            <source>This name is taken already.</source>
            <translation>Dieser Name ist schon vergeben.</translation>
        </message>
        <message>
            <source>You may not save in this folder.</source>
            <translation>In diesem Ordner dürfen Sie nicht sichern.</translation>
        </message>
        <message>
            <source>This folder is no longer there.</source>
            <translation>Dieser Ordner ist nicht mehr da.</translation>
        </message>
        <message>
            <source>There is not enough room left.</source>
            <translation>Der freie Platz reicht nicht.</translation>
        </message>
        <message>
            <source>The file is too large for this drive.</source>
            <translation>Die Datei ist zu groß für dieses Laufwerk.</translation>
        </message>
        <message>
            <source>It could not be saved.</source>
            <translation>Das Sichern ist fehlgeschlagen.</translation>
        </message>
    </context>
    <context>
        <name>ToastActivityView</name>
        <message>
            <source>In progress</source>
            <translation>In Arbeit</translation>
        </message>
    </context>
    <context>
        <name>UIActivityViewController</name>
        <message>
            <source>The file cannot be read.</source>
            <translation>Die Datei kann nicht gelesen werden.</translation>
        </message>
        <message>
            <source>Open in Another App</source>
            <translation>In anderer App öffnen</translation>
        </message>
        <message>
            <source>Save a Copy</source>
            <translation>Kopie sichern</translation>
        </message>
        <message>
            <source>Copy File</source>
            <translation>Datei kopieren</translation>
        </message>
        <message>
            <source>Send by E-Mail</source>
            <translation>Per E-Mail senden</translation>
        </message>
        <message>
            <source>Show in Folder</source>
            <translation>Im Ordner zeigen</translation>
        </message>
        <message>
            <source>No application could open the file.</source>
            <translation>Keine App konnte die Datei öffnen.</translation>
        </message>
        <message>
            <source>No e-mail application could be started.</source>
            <translation>Keine E-Mail-App konnte gestartet werden.</translation>
        </message>
        <message>
            <source>The folder could not be opened.</source>
            <translation>Der Ordner konnte nicht geöffnet werden.</translation>
        </message>
        <message>
            <source>Saved to “%1”</source>
            <translation>Gesichert in „%1“</translation>
        </message>
        <message>
            <source>Copied</source>
            <translation>Kopiert</translation>
        </message>
    </context>
    <context>
        <name>URLError</name>
        <message>
            <source>The download was cancelled.</source>
            <translation>Der Download wurde abgebrochen.</translation>
        </message>
        <message>
            <source>The address or a header of the request is not valid.</source>
            <translation>Die Adresse oder ein Header der Anfrage ist ungültig.</translation>
        </message>
        <message>
            <source>This kind of address is not supported.</source>
            <translation>Diese Art von Adresse wird nicht unterstützt.</translation>
        </message>
        <message>
            <source>The request timed out.</source>
            <translation>Zeitüberschreitung bei der Anfrage.</translation>
        </message>
        <message>
            <source>There is no network connection.</source>
            <translation>Es besteht keine Netzwerkverbindung.</translation>
        </message>
        <message>
            <source>The server could not be found.</source>
            <translation>Der Server wurde nicht gefunden.</translation>
        </message>
        <message>
            <source>Could not connect to the proxy server.</source>
            <translation>Keine Verbindung zum Proxyserver möglich.</translation>
        </message>
        <message>
            <source>Could not connect to the server.</source>
            <translation>Keine Verbindung zum Server möglich.</translation>
        </message>
        <message>
            <source>The network connection was lost.</source>
            <translation>Die Netzwerkverbindung wurde unterbrochen.</translation>
        </message>
        <message>
            <source>The server sent only a part of the file.</source>
            <translation>Der Server hat nur einen Teil der Datei gesendet.</translation>
        </message>
        <message>
            <source>A secure connection to the server could not be made.</source>
            <translation>Es konnte keine sichere Verbindung zum Server hergestellt werden.</translation>
        </message>
        <message>
            <source>The certificate of the server is not trusted.</source>
            <translation>Dem Zertifikat des Servers wird nicht vertraut.</translation>
        </message>
        <message>
            <source>The server redirected the request too often.</source>
            <translation>Der Server hat die Anfrage zu oft umgeleitet.</translation>
        </message>
        <message>
            <source>The server redirected the request to an address that is not supported.</source>
            <translation>Der Server hat die Anfrage an eine Adresse umgeleitet, die nicht unterstützt wird.</translation>
        </message>
        <message>
            <source>The server redirected the request to a place that is not allowed.</source>
            <translation>Der Server hat die Anfrage an einen Ort umgeleitet, der nicht erlaubt ist.</translation>
        </message>
        <message>
            <source>The server sent an answer that is not valid.</source>
            <translation>Der Server hat eine ungültige Antwort gesendet.</translation>
        </message>
        <message>
            <source>The server sent an answer that is too large.</source>
            <translation>Der Server hat eine zu große Antwort gesendet.</translation>
        </message>
        <message>
            <source>The data from the server is damaged.</source>
            <translation>Die Daten vom Server sind beschädigt.</translation>
        </message>
        <message>
            <source>The file could not be made.</source>
            <translation>Die Datei konnte nicht angelegt werden.</translation>
        </message>
        <message>
            <source>The file could not be written.</source>
            <translation>Die Datei konnte nicht geschrieben werden.</translation>
        </message>
        <message>
            <source>There is not enough space for the file.</source>
            <translation>Für die Datei ist nicht genug Platz.</translation>
        </message>
        <message>
            <source>The download failed.</source>
            <translation>Der Download ist fehlgeschlagen.</translation>
        </message>
    </context>
    <context>
        <name>zelkam.mobile.ZelkamMobileContents</name>
        <message>
            <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
            <translation>wurde heruntergeladen.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::CameraView</name>
        <message>
            <source>Switch camera</source>
            <translation>Kamera wechseln</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>Abbrechen</translation>
        </message>
        <message>
            <source>Retake</source>
            <translation>Neu aufnehmen</translation>
        </message>
        <message>
            <source>Use photo</source>
            <translation>Foto verwenden</translation>
        </message>
        <message>
            <source>No camera found</source>
            <translation>Keine Kamera gefunden</translation>
        </message>
        <message>
            <source>Connect a camera and try again.</source>
            <translation>Schließen Sie eine Kamera an und versuchen Sie es erneut.</translation>
        </message>
        <message>
            <source>The camera cannot be used</source>
            <translation>Die Kamera kann nicht verwendet werden</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentBrowser</name>
        <message numerus="yes">
            <source>%Ln item(s) so far</source>
            <translation>
                <numerusform>Bisher %Ln Objekt</numerusform>
                <numerusform>Bisher %Ln Objekte</numerusform>
            </translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>Dokumente</translation>
        </message>
        <message>
            <source>Folder above</source>
            <translation>Übergeordneter Ordner</translation>
        </message>
        <message>
            <source>It is no longer there.</source>
            <translation>Er ist nicht mehr da.</translation>
        </message>
        <message>
            <source>No name in this folder contains “%1”.</source>
            <translation>Kein Name in diesem Ordner enthält „%1“.</translation>
        </message>
        <message>
            <source>Nothing found</source>
            <translation>Nichts gefunden</translation>
        </message>
        <message>
            <source>Places</source>
            <translation>Orte</translation>
        </message>
        <message>
            <source>Reading the folder…</source>
            <translation>Ordner wird gelesen …</translation>
        </message>
        <message>
            <source>This folder cannot be opened</source>
            <translation>Dieser Ordner kann nicht geöffnet werden</translation>
        </message>
        <message>
            <source>This folder is empty</source>
            <translation>Dieser Ordner ist leer</translation>
        </message>
        <message>
            <source>You do not have the permission.</source>
            <translation>Sie haben nicht die Berechtigung.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPickerView</name>
        <message>
            <source>Clear</source>
            <translation>Abwählen</translation>
        </message>
        <message>
            <source>Open</source>
            <translation>Öffnen</translation>
        </message>
        <message>
            <source>Choose documents</source>
            <translation>Dokumente wählen</translation>
        </message>
        <message>
            <source>Choose a document</source>
            <translation>Dokument wählen</translation>
        </message>
        <message>
            <source>Nothing selected</source>
            <translation>Nichts ausgewählt</translation>
        </message>
        <message>
            <source>Choose one document</source>
            <translation>Wählen Sie ein Dokument</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln ausgewählt</numerusform>
                <numerusform>%Ln ausgewählt</numerusform>
            </translation>
        </message>
        <message>
            <source>Opening…</source>
            <translation>Wird geöffnet …</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPlacesList</name>
        <message>
            <source>Places</source>
            <translation>Orte</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentSaveView</name>
        <message>
            <source>Save a Copy</source>
            <translation>Kopie sichern</translation>
        </message>
        <message>
            <source>Name</source>
            <translation>Name</translation>
        </message>
        <message>
            <source>Save</source>
            <translation>Sichern</translation>
        </message>
        <message>
            <source>Saving…</source>
            <translation>Wird gesichert …</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ImageGridPickerController</name>
        <message numerus="yes">
            <source>You can select up to %Ln photo(s).</source>
            <translation>
                <numerusform>Sie können bis zu %Ln Foto auswählen.</numerusform>
                <numerusform>Sie können bis zu %Ln Fotos auswählen.</numerusform>
            </translation>
        </message>
        <message>
            <source>The photo could not be saved.</source>
            <translation>Das Foto konnte nicht gesichert werden.</translation>
        </message>
        <message>
            <source>%1 of %2 selected</source>
            <translation>%1 von %2</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln ausgewählt</numerusform>
                <numerusform>%Ln ausgewählt</numerusform>
            </translation>
        </message>
        <message>
            <source>Select photos</source>
            <translation>Fotos wählen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::LoadingView</name>
        <message>
            <source>Loading</source>
            <translation>Wird geladen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MediaView</name>
        <message>
            <source>Position</source>
            <translation>Position</translation>
        </message>
        <message>
            <source>The file cannot be played on this device.</source>
            <translation>Die Datei kann auf diesem Gerät nicht abgespielt werden.</translation>
        </message>
        <message>
            <source>Pause</source>
            <translation>Pause</translation>
        </message>
        <message>
            <source>Play</source>
            <translation>Wiedergabe</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MessageScreen</name>
        <message>
            <source>Try Again</source>
            <translation>Erneut versuchen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::NewFolderRow</name>
        <message>
            <source>New Folder</source>
            <translation>Neuer Ordner</translation>
        </message>
        <message>
            <source>Create</source>
            <translation>Anlegen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoGridView</name>
        <message>
            <source>Photos</source>
            <translation>Fotos</translation>
        </message>
        <message>
            <source>Take a photo</source>
            <translation>Foto aufnehmen</translation>
        </message>
        <message>
            <source>%1, selected as number %2</source>
            <translation>%1, ausgewählt als Nummer %2</translation>
        </message>
        <message>
            <source>Take photo</source>
            <translation>Foto aufnehmen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoLibraryView</name>
        <message>
            <source>Photos</source>
            <translation>Fotos</translation>
        </message>
        <message>
            <source>There is no pictures folder</source>
            <translation>Es gibt keinen Bilderordner</translation>
        </message>
        <message>
            <source>It is missing, or cannot be read.</source>
            <translation>Er fehlt oder kann nicht gelesen werden.</translation>
        </message>
        <message>
            <source>No photos yet</source>
            <translation>Noch keine Fotos</translation>
        </message>
        <message>
            <source>Pictures in your pictures folder appear here.</source>
            <translation>Bilder aus Ihrem Bilderordner erscheinen hier.</translation>
        </message>
        <message>
            <source>Looking for photos…</source>
            <translation>Fotos werden gesucht …</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PickerSearchField</name>
        <message>
            <source>Search in this folder</source>
            <translation>In diesem Ordner suchen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PictureCamera</name>
        <message>
            <source>The picture for the camera cannot be read.</source>
            <translation>Das Bild für die Kamera kann nicht gelesen werden.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::QLPreviewController</name>
        <message>
            <source>The file is not there any more.</source>
            <translation>Die Datei ist nicht mehr da.</translation>
        </message>
        <message>
            <source>The file cannot be read.</source>
            <translation>Die Datei kann nicht gelesen werden.</translation>
        </message>
        <message>
            <source>This is not a file that can be shown.</source>
            <translation>Diese Datei kann nicht angezeigt werden.</translation>
        </message>
        <message>
            <source>The image is too large to be shown.</source>
            <translation>Das Bild ist zu groß, um angezeigt zu werden.</translation>
        </message>
        <message>
            <source>The image is damaged or of a kind that cannot be shown.</source>
            <translation>Das Bild ist beschädigt oder von einer Art, die nicht angezeigt werden kann.</translation>
        </message>
        <message>
            <source>The document is protected by a password.</source>
            <translation>Das Dokument ist durch ein Passwort geschützt.</translation>
        </message>
        <message>
            <source>The document is damaged and cannot be shown.</source>
            <translation>Das Dokument ist beschädigt und kann nicht angezeigt werden.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::SaveCopyViewController</name>
        <message>
            <source>Already in this folder</source>
            <translation>Schon in diesem Ordner</translation>
        </message>
        <message>
            <source>Replace</source>
            <translation>Ersetzen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShareSheet</name>
        <message>
            <source>Cancel</source>
            <translation>Abbrechen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShutterButton</name>
        <message>
            <source>Take photo</source>
            <translation>Foto aufnehmen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::StatusBar</name>
        <message>
            <source>The network is in use</source>
            <translation>Das Netzwerk wird verwendet</translation>
        </message>
    </context>
    <context>
        <name>zelkam::TextView</name>
        <message>
            <source>Only the beginning of this file is shown.</source>
            <translation>Nur der Anfang dieser Datei wird angezeigt.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIActivityViewController</name>
        <message numerus="yes">
            <source>%n file(s)</source>
            <translation>
                <numerusform>%n Datei</numerusform>
                <numerusform>%n Dateien</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIBarButtonItem</name>
        <message>
            <source>Done</source>
            <translation>Fertig</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>Abbrechen</translation>
        </message>
        <message>
            <source>Add</source>
            <translation>Hinzufügen</translation>
        </message>
        <message>
            <source>Share</source>
            <translation>Teilen</translation>
        </message>
        <message>
            <source>Delete</source>
            <translation>Löschen</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UINavigationController</name>
        <message>
            <source>Back</source>
            <translation>Zurück</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebPage</name>
        <message>
            <source>Permission</source>
            <translation>Berechtigung</translation>
        </message>
        <message>
            <source>%1 asks for the use of a function of this device, such as the camera, the position or notifications. Allow it?</source>
            <translation>%1 möchte eine Funktion dieses Geräts verwenden, etwa die Kamera, den Standort oder Mitteilungen. Erlauben?</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebViewController</name>
        <message>
            <source>The server answered with the status %1.</source>
            <translation>Der Server hat mit dem Status %1 geantwortet.</translation>
        </message>
        <message>
            <source>This page cannot be shown</source>
            <translation>Diese Seite kann nicht angezeigt werden</translation>
        </message>
        <message>
            <source>The file could not be read.</source>
            <translation>Die Datei konnte nicht gelesen werden.</translation>
        </message>
        <message>
            <source>%1 could not be reached, or did not give the page.</source>
            <translation>%1 war nicht erreichbar oder hat die Seite nicht geliefert.</translation>
        </message>
        <message>
            <source>This page has stopped</source>
            <translation>Diese Seite wurde beendet</translation>
        </message>
        <message>
            <source>Something went wrong while the page was shown.</source>
            <translation>Beim Anzeigen der Seite ist etwas schiefgegangen.</translation>
        </message>
    </context>
</TS>
