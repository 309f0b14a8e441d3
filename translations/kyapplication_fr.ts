<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>KyAttributeCategory</name>
    <message>
        <source>Callstack</source>
        <translation>Pile d&apos;appels</translation>
    </message>
    <message>
        <source>Locals</source>
        <translation>Variables locales</translation>
    </message>
    <message>
        <source>Globals</source>
        <translation>Variables globales</translation>
    </message>
</context>
<context>
    <name>KyHostCalls</name>
    <message>
        <source>(main chunk)</source>
        <translation>(programme principal)</translation>
    </message>
    <message>
        <source>(tail call)</source>
        <translation>(appel terminal)</translation>
    </message>
    <message>
        <source>(function)</source>
        <translation>(fonction)</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Appels</translation>
    </message>
    <message>
        <source>Calls under way; the variables are those of the one that is chosen.</source>
        <translation>Appels en cours ; les variables sont celles de l&apos;appel choisi.</translation>
    </message>
</context>
<context>
    <name>KyHostDebuggerWindow</name>
    <message>
        <source>breakpoint</source>
        <translation>point d&apos;arrêt</translation>
    </message>
    <message>
        <source>step</source>
        <translation>pas à pas</translation>
    </message>
    <message>
        <source>pause</source>
        <translation>pause</translation>
    </message>
    <message>
        <source>error</source>
        <translation>erreur</translation>
    </message>
    <message>
        <source>Step over</source>
        <translation>Pas à pas principal</translation>
    </message>
    <message>
        <source>Stops at the next line, but not in functions that it calls</source>
        <translation>S&apos;arrête à la ligne suivante, mais pas dans les fonctions qu&apos;elle appelle</translation>
    </message>
    <message>
        <source>Step out</source>
        <translation>Pas à pas sortant</translation>
    </message>
    <message>
        <source>Stops when the function has ended</source>
        <translation>S&apos;arrête quand la fonction est terminée</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Stops at the next line that runs</source>
        <translation>S&apos;arrête à la prochaine ligne exécutée</translation>
    </message>
    <message>
        <source>Breakpoint</source>
        <translation>Point d&apos;arrêt</translation>
    </message>
    <message>
        <source>Sets or takes a breakpoint at the line of the cursor</source>
        <translation>Place ou retire un point d&apos;arrêt à la ligne du curseur</translation>
    </message>
    <message>
        <source>Stop at errors</source>
        <translation>Arrêt aux erreurs</translation>
    </message>
    <message>
        <source>Stops where a script fails</source>
        <translation>S&apos;arrête là où un script échoue</translation>
    </message>
    <message>
        <source>Debugger - kyhost</source>
        <translation>Débogueur - kyhost</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Script</translation>
    </message>
    <message>
        <source>Script whose text stands below</source>
        <translation>Script dont le texte est affiché dessous</translation>
    </message>
    <message>
        <source>Text of the script</source>
        <translation>Texte du script</translation>
    </message>
    <message>
        <source>F9 sets or takes a breakpoint at the line of the cursor.</source>
        <translation>F9 place ou retire un point d&apos;arrêt à la ligne du curseur.</translation>
    </message>
    <message>
        <source>A click sets or takes a breakpoint (F9)</source>
        <translation>Un clic place ou retire un point d&apos;arrêt (F9)</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>Stopped at %1:%2 (%3)</source>
        <translation>Arrêté à %1:%2 (%3)</translation>
    </message>
</context>
<context>
    <name>KyHostKeys</name>
    <message>
        <source>Keys and gestures</source>
        <translation>Touches et gestes</translation>
    </message>
    <message>
        <source>show the whole model</source>
        <translation>montrer tout le modèle</translation>
    </message>
    <message>
        <source>1 to 6</source>
        <translation>1 à 6</translation>
    </message>
    <message>
        <source>look from front, back, right, left, above, below</source>
        <translation>vue de face, de dos, de droite, de gauche, de dessus, de dessous</translation>
    </message>
    <message>
        <source>parallel projection on and off</source>
        <translation>projection parallèle, activer ou désactiver</translation>
    </message>
    <message>
        <source>settings</source>
        <translation>paramètres</translation>
    </message>
    <message>
        <source>show and hide the keys</source>
        <translation>afficher et masquer les touches</translation>
    </message>
    <message>
        <source>debugger of the scripts</source>
        <translation>débogueur des scripts</translation>
    </message>
    <message>
        <source>write a picture into the current folder</source>
        <translation>écrire une image dans le dossier courant</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Échap</translation>
    </message>
    <message>
        <source>left drag, three fingers</source>
        <translation>glisser du bouton gauche, trois doigts</translation>
    </message>
    <message>
        <source>turn the view; of three fingers one moves</source>
        <translation>tourner la vue&#xa0;; de trois doigts, un seul bouge</translation>
    </message>
    <message>
        <source>middle drag, one finger</source>
        <translation>glisser du bouton du milieu, un doigt</translation>
    </message>
    <message>
        <source>shift the view</source>
        <translation>déplacer la vue</translation>
    </message>
    <message>
        <source>right drag</source>
        <translation>glisser du bouton droit</translation>
    </message>
    <message>
        <source>walk: up goes forward</source>
        <translation>marcher&#xa0;: vers le haut, on avance</translation>
    </message>
    <message>
        <source>wheel, two fingers</source>
        <translation>molette, deux doigts</translation>
    </message>
    <message>
        <source>nearer and farther; two fingers turn as well</source>
        <translation>plus près et plus loin&#xa0;; deux doigts tournent aussi</translation>
    </message>
    <message>
        <source>Control + left drag</source>
        <translation>Ctrl + glisser du bouton gauche</translation>
    </message>
    <message>
        <source>drag the object under the pointer</source>
        <translation>faire glisser l&apos;objet sous le pointeur</translation>
    </message>
    <message>
        <source>show and hide how fast frames come</source>
        <translation>afficher et masquer la cadence des images</translation>
    </message>
    <message>
        <source>Tab, F6</source>
        <translation>Tab, F6</translation>
    </message>
    <message>
        <source>give the keys to a form in the view; F6 to the next one</source>
        <translation>donner le clavier à un formulaire de la vue ; F6 au suivant</translation>
    </message>
    <message>
        <source>leave the form, cancel long work, close the help, then the window</source>
        <translation>quitter le formulaire, annuler un long travail, fermer l&apos;aide, puis la fenêtre</translation>
    </message>
</context>
<context>
    <name>KyHostLanguagePage</name>
    <message>
        <source>View</source>
        <translation>Affichage</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Langue</translation>
    </message>
    <message>
        <source>Language of windows and dialogs</source>
        <translation>Langue des fenêtres et des dialogues</translation>
    </message>
    <message>
        <source>As the system (%1)</source>
        <translation>Comme le système (%1)</translation>
    </message>
</context>
<context>
    <name>KyHostNavigationPage</name>
    <message>
        <source>View</source>
        <translation>Affichage</translation>
    </message>
    <message>
        <source>Navigation</source>
        <translation>Navigation</translation>
    </message>
    <message>
        <source>How fast the view follows the hand</source>
        <translation>Vitesse à laquelle la vue suit la main</translation>
    </message>
    <message>
        <source>Turns the direction round</source>
        <translation>Inverse le sens</translation>
    </message>
    <message>
        <source>&amp;Turn</source>
        <translation>&amp;Tourner</translation>
    </message>
    <message>
        <source>&amp;Shift</source>
        <translation>&amp;Déplacer</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>&amp;Zoomer</translation>
    </message>
    <message>
        <source>&amp;Walk</source>
        <translation>&amp;Marcher</translation>
    </message>
    <message>
        <source>&amp;Look round</source>
        <translation>&amp;Regarder autour</translation>
    </message>
    <message>
        <source>The scene &amp;follows when turning</source>
        <translation>La &amp;scène suit en tournant</translation>
    </message>
    <message>
        <source>The scene follows when wal&amp;king</source>
        <translation>La scène suit en marc&amp;hant</translation>
    </message>
    <message>
        <source>The scene follows when looking &amp;round</source>
        <translation>La scène suit en re&amp;gardant autour</translation>
    </message>
</context>
<context>
    <name>KyHostProgress</name>
    <message>
        <source>Downloading, %1</source>
        <translation>Téléchargement, %1</translation>
    </message>
    <message>
        <source>%1   Esc cancels</source>
        <translation>%1   Échap annule</translation>
    </message>
    <message>
        <source>Loading %1</source>
        <translation>Chargement de %1</translation>
    </message>
    <message>
        <source>Copying %1</source>
        <translation>Copie de %1</translation>
    </message>
    <message>
        <source>Deleting %1</source>
        <translation>Suppression de %1</translation>
    </message>
    <message>
        <source>Unpacking %1</source>
        <translation>Décompression de %1</translation>
    </message>
</context>
<context>
    <name>KyHostSourceView</name>
    <message>
        <source>Line %1 has a breakpoint.</source>
        <translation>La ligne %1 a un point d&apos;arrêt.</translation>
    </message>
    <message>
        <source>Line %1 has no breakpoint.</source>
        <translation>La ligne %1 n&apos;a pas de point d&apos;arrêt.</translation>
    </message>
</context>
<context>
    <name>KyHostStatistics</name>
    <message>
        <source>frames</source>
        <translation>images</translation>
    </message>
    <message>
        <source>drawing</source>
        <translation>dessin</translation>
    </message>
    <message>
        <source>draw calls</source>
        <translation>appels</translation>
    </message>
    <message>
        <source>nodes</source>
        <translation>nœuds</translation>
    </message>
    <message>
        <source>%1/s  %2 ms, longest %3</source>
        <translation>%1/s  %2 ms, max. %3</translation>
    </message>
    <message>
        <source>%1, primitives: %2</source>
        <translation>%1, primitives : %2</translation>
    </message>
    <message>
        <source>%1 MB, coroutines: %2</source>
        <translation>%1 Mo, coroutines : %2</translation>
    </message>
</context>
<context>
    <name>KyHostVariables</name>
    <message>
        <source>Locals</source>
        <translation>Variables locales</translation>
    </message>
    <message>
        <source>Upvalues</source>
        <translation>Variables des fonctions englobantes</translation>
    </message>
    <message>
        <source>Globals</source>
        <translation>Variables globales</translation>
    </message>
    <message>
        <source>table of %1</source>
        <translation>table de %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variables</translation>
    </message>
    <message>
        <source>Right opens a table or an object, Left closes it.</source>
        <translation>Droite ouvre une table ou un objet, Gauche le ferme.</translation>
    </message>
    <message>
        <source>the rest is left out</source>
        <translation>le reste est omis</translation>
    </message>
</context>
<context>
    <name>KyLanguage</name>
    <message>
        <source>English</source>
        <comment>what the language of the translation calls itself</comment>
        <translation>Français</translation>
    </message>
</context>
<context>
    <name>KyNetworkConnection</name>
    <message>
        <source>Connection: Busy</source>
        <translation>Connexion : occupée</translation>
    </message>
    <message>
        <source>Connection: Ready</source>
        <translation>Connexion : prête</translation>
    </message>
    <message>
        <source>Connection: Failed</source>
        <translation>Connexion : échec</translation>
    </message>
    <message>
        <source>Connection: Authentication required</source>
        <translation>Connexion : authentification requise</translation>
    </message>
    <message>
        <source>Connection: Unkown error</source>
        <translation>Connexion : erreur inconnue</translation>
    </message>
    <message>
        <source>Another download is in progress.</source>
        <translation>Un autre téléchargement est en cours.</translation>
    </message>
</context>
<context>
    <name>KyQAttributeEditor</name>
    <message>
        <source>&amp;Edit the value</source>
        <translation>&amp;Modifier la valeur</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>&amp;Undo the change of %1</source>
        <translation>&amp;Annuler la modification de %1</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rétablir</translation>
    </message>
    <message>
        <source>&amp;Redo the change of %1</source>
        <translation>&amp;Rétablir la modification de %1</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>Rec&amp;hercher</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Shows the attributes whose names hold the text.</source>
        <translation>Affiche les attributs dont le nom contient le texte.</translation>
    </message>
    <message>
        <source>Attributes</source>
        <translation>Attributs</translation>
    </message>
    <message>
        <source>Names and values of the object; F2 edits.</source>
        <translation>Noms et valeurs de l&apos;objet&#xa0;; F2 modifie.</translation>
    </message>
    <message>
        <source>Sho&amp;w the whole value</source>
        <translation>Afficher &amp;toute la valeur</translation>
    </message>
    <message>
        <source>&amp;Copy the value</source>
        <translation>&amp;Copier la valeur</translation>
    </message>
    <message>
        <source>Names and values of the object; F2 shows all of one, Ctrl+C copies it.</source>
        <translation>Noms et valeurs de l&apos;objet ; F2 en affiche une en entier, Ctrl+C la copie.</translation>
    </message>
</context>
<context>
    <name>KyQAttributeModel</name>
    <message>
        <source>none</source>
        <translation>aucun</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message numerus="yes">
        <source>%n value(s)</source>
        <translation>
            <numerusform>%n valeur</numerusform>
            <numerusform>%n valeurs</numerusform>
        </translation>
    </message>
    <message>
        <source>true</source>
        <translation>vrai</translation>
    </message>
    <message>
        <source>false</source>
        <translation>faux</translation>
    </message>
</context>
<context>
    <name>KyQColorEditor</name>
    <message>
        <source>Choose a colour</source>
        <translation>Choisir une couleur</translation>
    </message>
</context>
<context>
    <name>KyQFieldEditor</name>
    <message>
        <source>%1, %2 of %3</source>
        <translation>%1, %2 sur %3</translation>
    </message>
    <message>
        <source>Return writes, Escape takes back, Tab goes on.</source>
        <translation>Entrée écrit, Échap annule, Tab continue.</translation>
    </message>
</context>
<context>
    <name>KyQLuaDebuggerEditor</name>
    <message>
        <source>&amp;Resume</source>
        <translation>&amp;Reprendre</translation>
    </message>
    <message>
        <source>Lets the script run on</source>
        <translation>Laisse le script continuer</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>&amp;Pas à pas détaillé</translation>
    </message>
    <message>
        <source>Stops at the next line</source>
        <translation>S&apos;arrête à la ligne suivante</translation>
    </message>
</context>
<context>
    <name>KyQProxySettingsEditor</name>
    <message>
        <source>&amp;Host</source>
        <translation>&amp;Hôte</translation>
    </message>
    <message>
        <source>Name or address of the proxy</source>
        <translation>Nom ou adresse du proxy</translation>
    </message>
    <message>
        <source>Port of the proxy</source>
        <translation>Port du proxy</translation>
    </message>
    <message>
        <source>&amp;User</source>
        <translation>&amp;Utilisateur</translation>
    </message>
    <message>
        <source>Where the proxy asks for a name</source>
        <translation>Si le proxy demande un nom</translation>
    </message>
    <message>
        <source>Pass&amp;word</source>
        <translation>&amp;Mot de passe</translation>
    </message>
    <message>
        <source>Is kept encrypted</source>
        <translation>Est conservé chiffré</translation>
    </message>
    <message>
        <source>Not for these a&amp;ddresses</source>
        <translation>Pas pour ces a&amp;dresses</translation>
    </message>
    <message>
        <source>Separated by commas, such as &quot;localhost, *.example.org&quot;</source>
        <translation>Séparées par des virgules, par exemple «&#xa0;localhost, *.example.org&#xa0;»</translation>
    </message>
    <message>
        <source>Test addr&amp;ess</source>
        <translation>Adresse de t&amp;est</translation>
    </message>
    <message>
        <source>What the test of the connection reaches for</source>
        <translation>Ce que le test de la connexion cherche à joindre</translation>
    </message>
    <message>
        <source>The server refuses the connection.</source>
        <translation>Le serveur refuse la connexion.</translation>
    </message>
    <message>
        <source>The server closed the connection.</source>
        <translation>Le serveur a fermé la connexion.</translation>
    </message>
    <message>
        <source>The server of the test address is not known.</source>
        <translation>Le serveur de l&apos;adresse de test est inconnu.</translation>
    </message>
    <message>
        <source>There was no answer in time.</source>
        <translation>Aucune réponse n&apos;est arrivée à temps.</translation>
    </message>
    <message>
        <source>The certificate of the server is not trusted.</source>
        <translation>Le certificat du serveur n&apos;est pas digne de confiance.</translation>
    </message>
    <message>
        <source>The proxy refuses the connection.</source>
        <translation>Le proxy refuse la connexion.</translation>
    </message>
    <message>
        <source>The proxy closed the connection.</source>
        <translation>Le proxy a fermé la connexion.</translation>
    </message>
    <message>
        <source>The proxy is not known under this name.</source>
        <translation>Le proxy est inconnu sous ce nom.</translation>
    </message>
    <message>
        <source>The proxy did not answer in time.</source>
        <translation>Le proxy n&apos;a pas répondu à temps.</translation>
    </message>
    <message>
        <source>The proxy does not accept the user name and the password.</source>
        <translation>Le proxy n&apos;accepte pas le nom d&apos;utilisateur et le mot de passe.</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Réseau</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source>Use the proxy of the &amp;system</source>
        <translation>Utiliser le proxy du &amp;système</translation>
    </message>
    <message>
        <source>Host and port are those that the system tells</source>
        <translation>L&apos;hôte et le port sont ceux qu&apos;indique le système</translation>
    </message>
    <message>
        <source>&amp;Test connection</source>
        <translation>&amp;Tester la connexion</translation>
    </message>
    <message>
        <source>Tries to reach the test address with what the page shows</source>
        <translation>Essaie de joindre l&apos;adresse de test avec les valeurs de la page</translation>
    </message>
    <message>
        <source>Result of the test</source>
        <translation>Résultat du test</translation>
    </message>
    <message>
        <source>The host of the proxy is not the name of a host.</source>
        <translation>L&apos;hôte du proxy n&apos;est pas un nom d&apos;hôte.</translation>
    </message>
    <message>
        <source>The test address does not begin with http:// or https://.</source>
        <translation>L&apos;adresse de test ne commence pas par http:// ou https://.</translation>
    </message>
    <message>
        <source>The test address must not name a user or password.</source>
        <translation>L&apos;adresse de test ne doit contenir ni utilisateur ni mot de passe.</translation>
    </message>
    <message>
        <source>The password has characters that cannot be kept.</source>
        <translation>Le mot de passe contient des caractères qui ne peuvent pas être conservés.</translation>
    </message>
    <message>
        <source>The password cannot be encrypted.</source>
        <translation>Le mot de passe ne peut pas être chiffré.</translation>
    </message>
    <message>
        <source>Testing ...</source>
        <translation>Test en cours ...</translation>
    </message>
    <message>
        <source>The connection works.</source>
        <translation>La connexion fonctionne.</translation>
    </message>
    <message>
        <source>The connection works, but the test address answers with the status %1.</source>
        <translation>La connexion fonctionne, mais l&apos;adresse de test répond avec le statut %1.</translation>
    </message>
    <message>
        <source>The test address cannot be reached (error %1).</source>
        <translation>L&apos;adresse de test est injoignable (erreur %1).</translation>
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
        <translation>aucun</translation>
    </message>
</context>
<context>
    <name>KyQSettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>Chooses the page beside it.</source>
        <translation>Choisit la page voisine.</translation>
    </message>
    <message>
        <source>Takes over all pages and closes the settings</source>
        <translation>Applique toutes les pages et ferme les paramètres</translation>
    </message>
    <message>
        <source>Takes over all pages</source>
        <translation>Applique toutes les pages</translation>
    </message>
    <message>
        <source>Closes the settings without taking over the pages</source>
        <translation>Ferme les paramètres sans appliquer les pages</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Appliquer</translation>
    </message>
</context>
<context>
    <name>KyQSettingsEditor</name>
    <message>
        <source>The settings cannot be saved in &quot;%1&quot;.</source>
        <translation>Les paramètres ne peuvent pas être enregistrés dans «&#xa0;%1&#xa0;».</translation>
    </message>
</context>
<context>
    <name>KyQUrlEditor</name>
    <message>
        <source>Choose a file</source>
        <translation>Choisir un fichier</translation>
    </message>
</context>
<context>
    <name>KyQmlErrorsReport</name>
    <message>
        <source>Cannot be shown: 1 error</source>
        <translation>Affichage impossible : 1 erreur</translation>
    </message>
    <message>
        <source>Cannot be shown: %1 errors</source>
        <translation>Affichage impossible : %1 erreurs</translation>
    </message>
    <message>
        <source>... and %1 more errors.</source>
        <translation>... et d&apos;autres erreurs : %1.</translation>
    </message>
    <message>
        <source>line %1, column %2</source>
        <translation>ligne %1, colonne %2</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>ligne %1</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Recharger</translation>
    </message>
    <message>
        <source>The root of this QML is no Item, so there is nothing to show.</source>
        <translation>La racine de ce QML n&apos;est pas un Item : il n&apos;y a rien à afficher.</translation>
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
        <translation>&amp;Annuler</translation>
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
        <translation>Appliquer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
</TS>
