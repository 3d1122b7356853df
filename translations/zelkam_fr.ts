<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
    <context>
        <name>DocumentPicker</name>
        <message>
            <source>Selected</source>
            <translation>Sélectionné</translation>
        </message>
        <message>
            <source>This kind cannot be chosen here</source>
            <translation>Ce type ne peut pas être choisi ici</translation>
        </message>
        <message>
            <source>You may not open this</source>
            <translation>Vous n’avez pas le droit d’ouvrir ceci</translation>
        </message>
        <message>
            <source>Not a document</source>
            <translation>Ce n’est pas un document</translation>
        </message>
    </context>
    <context>
        <name>DocumentPlaces</name>
        <message>
            <source>Home</source>
            <translation>Dossier personnel</translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>Documents</translation>
        </message>
        <message>
            <source>Downloads</source>
            <translation>Téléchargements</translation>
        </message>
        <message>
            <source>Pictures</source>
            <translation>Images</translation>
        </message>
        <message>
            <source>Music</source>
            <translation>Musique</translation>
        </message>
        <message>
            <source>Videos</source>
            <translation>Vidéos</translation>
        </message>
        <message>
            <source>Desktop</source>
            <translation>Bureau</translation>
        </message>
        <message>
            <source>This device</source>
            <translation>Cet appareil</translation>
        </message>
    </context>
    <context>
        <name>FileName</name>
        <message>
            <source>(unnamed)</source>
            <translation>(sans nom)</translation>
        </message>
    </context>
    <context>
        <name>FileSaving</name>
        <message>
            <source>Enter a name.</source>
            <translation>Saisissez un nom.</translation>
        </message>
        <message>
            <source>A name cannot contain a slash.</source>
            <translation>Un nom ne peut pas contenir de barre oblique.</translation>
        </message>
        <message>
            <source>This name is not possible here.</source>
            <translation>Ce nom n’est pas possible ici.</translation>
        </message>
        <message>
            <source>This name is too long.</source>
            <translation>Ce nom est trop long.</translation>
        </message>
        <message>
            <source>This name is taken already.</source>
            <translation>Ce nom est déjà pris.</translation>
        </message>
        <message>
            <source>You may not save in this folder.</source>
            <translation>Vous ne pouvez pas enregistrer dans ce dossier.</translation>
        </message>
        <message>
            <source>This folder is no longer there.</source>
            <translation>Ce dossier n’existe plus.</translation>
        </message>
        <message>
            <source>There is not enough room left.</source>
            <translation>Il n’y a plus assez de place.</translation>
        </message>
        <message>
            <source>The file is too large for this drive.</source>
            <translation>Le fichier est trop volumineux pour ce disque.</translation>
        </message>
        <message>
            <source>It could not be saved.</source>
            <translation>L’enregistrement a échoué.</translation>
        </message>
    </context>
    <context>
        <name>ToastActivityView</name>
        <message>
            <source>In progress</source>
            <translation>En cours</translation>
        </message>
    </context>
    <context>
        <name>UIActivityViewController</name>
        <message>
            <source>The file cannot be read.</source>
            <translation>Le fichier ne peut pas être lu.</translation>
        </message>
        <message>
            <source>Open in Another App</source>
            <translation>Ouvrir dans une autre app</translation>
        </message>
        <message>
            <source>Save a Copy</source>
            <translation>Enregistrer une copie</translation>
        </message>
        <message>
            <source>Copy File</source>
            <translation>Copier le fichier</translation>
        </message>
        <message>
            <source>Send by E-Mail</source>
            <translation>Envoyer par e-mail</translation>
        </message>
        <message>
            <source>Show in Folder</source>
            <translation>Afficher dans le dossier</translation>
        </message>
        <message>
            <source>No application could open the file.</source>
            <translation>Aucune app n’a pu ouvrir le fichier.</translation>
        </message>
        <message>
            <source>No e-mail application could be started.</source>
            <translation>Aucune app de messagerie n’a pu être lancée.</translation>
        </message>
        <message>
            <source>The folder could not be opened.</source>
            <translation>Le dossier n’a pas pu être ouvert.</translation>
        </message>
        <message>
            <source>Saved to “%1”</source>
            <translation>Enregistré dans « %1 »</translation>
        </message>
        <message>
            <source>Copied</source>
            <translation>Copié</translation>
        </message>
    </context>
    <context>
        <name>URLError</name>
        <message>
            <source>The download was cancelled.</source>
            <translation>Le téléchargement a été annulé.</translation>
        </message>
        <message>
            <source>The address or a header of the request is not valid.</source>
            <translation>L’adresse ou un en-tête de la requête n’est pas valide.</translation>
        </message>
        <message>
            <source>This kind of address is not supported.</source>
            <translation>Ce type d’adresse n’est pas pris en charge.</translation>
        </message>
        <message>
            <source>The request timed out.</source>
            <translation>Le délai de la requête a expiré.</translation>
        </message>
        <message>
            <source>There is no network connection.</source>
            <translation>Il n’y a pas de connexion réseau.</translation>
        </message>
        <message>
            <source>The server could not be found.</source>
            <translation>Le serveur est introuvable.</translation>
        </message>
        <message>
            <source>Could not connect to the proxy server.</source>
            <translation>Connexion au serveur proxy impossible.</translation>
        </message>
        <message>
            <source>Could not connect to the server.</source>
            <translation>Connexion au serveur impossible.</translation>
        </message>
        <message>
            <source>The network connection was lost.</source>
            <translation>La connexion réseau a été perdue.</translation>
        </message>
        <message>
            <source>The server sent only a part of the file.</source>
            <translation>Le serveur n’a envoyé qu’une partie du fichier.</translation>
        </message>
        <message>
            <source>A secure connection to the server could not be made.</source>
            <translation>Une connexion sécurisée au serveur n’a pas pu être établie.</translation>
        </message>
        <message>
            <source>The certificate of the server is not trusted.</source>
            <translation>Le certificat du serveur n’est pas approuvé.</translation>
        </message>
        <message>
            <source>The server redirected the request too often.</source>
            <translation>Le serveur a redirigé la requête trop souvent.</translation>
        </message>
        <message>
            <source>The server redirected the request to an address that is not supported.</source>
            <translation>Le serveur a redirigé la requête vers une adresse non prise en charge.</translation>
        </message>
        <message>
            <source>The server redirected the request to a place that is not allowed.</source>
            <translation>Le serveur a redirigé la requête vers un emplacement qui n’est pas autorisé.</translation>
        </message>
        <message>
            <source>The server sent an answer that is not valid.</source>
            <translation>Le serveur a envoyé une réponse non valide.</translation>
        </message>
        <message>
            <source>The server sent an answer that is too large.</source>
            <translation>Le serveur a envoyé une réponse trop volumineuse.</translation>
        </message>
        <message>
            <source>The data from the server is damaged.</source>
            <translation>Les données du serveur sont endommagées.</translation>
        </message>
        <message>
            <source>The file could not be made.</source>
            <translation>Le fichier n’a pas pu être créé.</translation>
        </message>
        <message>
            <source>The file could not be written.</source>
            <translation>Le fichier n’a pas pu être écrit.</translation>
        </message>
        <message>
            <source>There is not enough space for the file.</source>
            <translation>Il n’y a pas assez de place pour le fichier.</translation>
        </message>
        <message>
            <source>The download failed.</source>
            <translation>Le téléchargement a échoué.</translation>
        </message>
    </context>
    <context>
        <name>zelkam.mobile.ZelkamMobileContents</name>
        <message>
            <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
            <translation>a été téléchargé.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::CameraView</name>
        <message>
            <source>Switch camera</source>
            <translation>Changer d’appareil</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>Annuler</translation>
        </message>
        <message>
            <source>Retake</source>
            <translation>Reprendre</translation>
        </message>
        <message>
            <source>Use photo</source>
            <translation>Utiliser la photo</translation>
        </message>
        <message>
            <source>No camera found</source>
            <translation>Aucun appareil photo trouvé</translation>
        </message>
        <message>
            <source>Connect a camera and try again.</source>
            <translation>Connectez un appareil photo et réessayez.</translation>
        </message>
        <message>
            <source>The camera cannot be used</source>
            <translation>L’appareil photo ne peut pas être utilisé</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentBrowser</name>
        <message numerus="yes">
            <source>%Ln item(s) so far</source>
            <translation>
                <numerusform>%Ln élément jusqu’ici</numerusform>
                <numerusform>%Ln éléments jusqu’ici</numerusform>
            </translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>Documents</translation>
        </message>
        <message>
            <source>Folder above</source>
            <translation>Dossier parent</translation>
        </message>
        <message>
            <source>It is no longer there.</source>
            <translation>Il n’existe plus.</translation>
        </message>
        <message>
            <source>No name in this folder contains “%1”.</source>
            <translation>Aucun nom de ce dossier ne contient « %1 ».</translation>
        </message>
        <message>
            <source>Nothing found</source>
            <translation>Aucun résultat</translation>
        </message>
        <message>
            <source>Places</source>
            <translation>Emplacements</translation>
        </message>
        <message>
            <source>Reading the folder…</source>
            <translation>Lecture du dossier…</translation>
        </message>
        <message>
            <source>This folder cannot be opened</source>
            <translation>Ce dossier ne peut pas être ouvert</translation>
        </message>
        <message>
            <source>This folder is empty</source>
            <translation>Ce dossier est vide</translation>
        </message>
        <message>
            <source>You do not have the permission.</source>
            <translation>Vous n’en avez pas le droit.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPickerView</name>
        <message>
            <source>Clear</source>
            <translation>Décocher</translation>
        </message>
        <message>
            <source>Open</source>
            <translation>Ouvrir</translation>
        </message>
        <message>
            <source>Choose documents</source>
            <translation>Choisir des documents</translation>
        </message>
        <message>
            <source>Choose a document</source>
            <translation>Choisir un document</translation>
        </message>
        <message>
            <source>Nothing selected</source>
            <translation>Aucune sélection</translation>
        </message>
        <message>
            <source>Choose one document</source>
            <translation>Choisissez un document</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln sélectionné</numerusform>
                <numerusform>%Ln sélectionnés</numerusform>
            </translation>
        </message>
        <message>
            <source>Opening…</source>
            <translation>Ouverture…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPlacesList</name>
        <message>
            <source>Places</source>
            <translation>Emplacements</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentSaveView</name>
        <message>
            <source>Save a Copy</source>
            <translation>Enregistrer une copie</translation>
        </message>
        <message>
            <source>Name</source>
            <translation>Nom</translation>
        </message>
        <message>
            <source>Save</source>
            <translation>Enregistrer</translation>
        </message>
        <message>
            <source>Saving…</source>
            <translation>Enregistrement…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ImageGridPickerController</name>
        <message numerus="yes">
            <source>You can select up to %Ln photo(s).</source>
            <translation>
                <numerusform>Vous pouvez sélectionner jusqu’à %Ln photo.</numerusform>
                <numerusform>Vous pouvez sélectionner jusqu’à %Ln photos.</numerusform>
            </translation>
        </message>
        <message>
            <source>The photo could not be saved.</source>
            <translation>La photo n’a pas pu être enregistrée.</translation>
        </message>
        <message>
            <source>%1 of %2 selected</source>
            <translation>%1 sur %2</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln sélectionné</numerusform>
                <numerusform>%Ln sélectionnés</numerusform>
            </translation>
        </message>
        <message>
            <source>Select photos</source>
            <translation>Photos</translation>
        </message>
    </context>
    <context>
        <name>zelkam::LoadingView</name>
        <message>
            <source>Loading</source>
            <translation>Chargement</translation>
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
            <translation>Le fichier ne peut pas être lu sur cet appareil.</translation>
        </message>
        <message>
            <source>Pause</source>
            <translation>Pause</translation>
        </message>
        <message>
            <source>Play</source>
            <translation>Lecture</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MessageScreen</name>
        <message>
            <source>Try Again</source>
            <translation>Réessayer</translation>
        </message>
    </context>
    <context>
        <name>zelkam::NewFolderRow</name>
        <message>
            <source>New Folder</source>
            <translation>Nouveau dossier</translation>
        </message>
        <message>
            <source>Create</source>
            <translation>Créer</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoGridView</name>
        <message>
            <source>Photos</source>
            <translation>Photos</translation>
        </message>
        <message>
            <source>Take a photo</source>
            <translation>Prendre une photo</translation>
        </message>
        <message>
            <source>%1, selected as number %2</source>
            <translation>%1, sélectionnée en numéro %2</translation>
        </message>
        <message>
            <source>Take photo</source>
            <translation>Prendre une photo</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoLibraryView</name>
        <message>
            <source>Photos</source>
            <translation>Photos</translation>
        </message>
        <message>
            <source>There is no pictures folder</source>
            <translation>Il n’y a pas de dossier d’images</translation>
        </message>
        <message>
            <source>It is missing, or cannot be read.</source>
            <translation>Il est absent ou ne peut pas être lu.</translation>
        </message>
        <message>
            <source>No photos yet</source>
            <translation>Aucune photo pour l’instant</translation>
        </message>
        <message>
            <source>Pictures in your pictures folder appear here.</source>
            <translation>Les images de votre dossier d’images apparaissent ici.</translation>
        </message>
        <message>
            <source>Looking for photos…</source>
            <translation>Recherche de photos…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PickerSearchField</name>
        <message>
            <source>Search in this folder</source>
            <translation>Rechercher dans ce dossier</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PictureCamera</name>
        <message>
            <source>The picture for the camera cannot be read.</source>
            <translation>L’image destinée à l’appareil photo ne peut pas être lue.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::QLPreviewController</name>
        <message>
            <source>The file is not there any more.</source>
            <translation>Le fichier n’existe plus.</translation>
        </message>
        <message>
            <source>The file cannot be read.</source>
            <translation>Le fichier ne peut pas être lu.</translation>
        </message>
        <message>
            <source>This is not a file that can be shown.</source>
            <translation>Ce fichier ne peut pas être affiché.</translation>
        </message>
        <message>
            <source>The image is too large to be shown.</source>
            <translation>L’image est trop grande pour être affichée.</translation>
        </message>
        <message>
            <source>The image is damaged or of a kind that cannot be shown.</source>
            <translation>L’image est endommagée ou d’un type qui ne peut pas être affiché.</translation>
        </message>
        <message>
            <source>The document is protected by a password.</source>
            <translation>Le document est protégé par un mot de passe.</translation>
        </message>
        <message>
            <source>The document is damaged and cannot be shown.</source>
            <translation>Le document est endommagé et ne peut pas être affiché.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::SaveCopyViewController</name>
        <message>
            <source>Already in this folder</source>
            <translation>Déjà dans ce dossier</translation>
        </message>
        <message>
            <source>Replace</source>
            <translation>Remplacer</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShareSheet</name>
        <message>
            <source>Cancel</source>
            <translation>Annuler</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShutterButton</name>
        <message>
            <source>Take photo</source>
            <translation>Prendre une photo</translation>
        </message>
    </context>
    <context>
        <name>zelkam::StatusBar</name>
        <message>
            <source>The network is in use</source>
            <translation>Le réseau est utilisé</translation>
        </message>
    </context>
    <context>
        <name>zelkam::TextView</name>
        <message>
            <source>Only the beginning of this file is shown.</source>
            <translation>Seul le début de ce fichier est affiché.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIActivityViewController</name>
        <message numerus="yes">
            <source>%n file(s)</source>
            <translation>
                <numerusform>%n fichier</numerusform>
                <numerusform>%n fichiers</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIBarButtonItem</name>
        <message>
            <source>Done</source>
            <translation>OK</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>Annuler</translation>
        </message>
        <message>
            <source>Add</source>
            <translation>Ajouter</translation>
        </message>
        <message>
            <source>Share</source>
            <translation>Partager</translation>
        </message>
        <message>
            <source>Delete</source>
            <translation>Supprimer</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UINavigationController</name>
        <message>
            <source>Back</source>
            <translation>Retour</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebPage</name>
        <message>
            <source>Permission</source>
            <translation>Autorisation</translation>
        </message>
        <message>
            <source>%1 asks for the use of a function of this device, such as the camera, the position or notifications. Allow it?</source>
            <translation>%1 demande à utiliser une fonction de cet appareil, comme l’appareil photo, la position ou les notifications. Autoriser ?</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebViewController</name>
        <message>
            <source>The server answered with the status %1.</source>
            <translation>Le serveur a répondu avec le statut %1.</translation>
        </message>
        <message>
            <source>This page cannot be shown</source>
            <translation>Cette page ne peut pas être affichée</translation>
        </message>
        <message>
            <source>The file could not be read.</source>
            <translation>Le fichier n’a pas pu être lu.</translation>
        </message>
        <message>
            <source>%1 could not be reached, or did not give the page.</source>
            <translation>%1 est injoignable ou n’a pas fourni la page.</translation>
        </message>
        <message>
            <source>This page has stopped</source>
            <translation>Cette page s’est arrêtée</translation>
        </message>
        <message>
            <source>Something went wrong while the page was shown.</source>
            <translation>Un problème est survenu pendant l’affichage de la page.</translation>
        </message>
    </context>
</TS>
