<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name></name>
    <message id="Brimlo">
        <source></source>
        <extracomment>Product name</extracomment>
        <translation>Brimlo</translation>
    </message>
    <message id="accessibility.unavailable.body">
        <source></source>
        <extracomment>Notification body: this session does not let programs type, and what to do</extracomment>
        <translation>Cette session ne permet pas aux programmes de saisir du texte dans d’autres fenêtres (le serveur X n’a pas l’extension XTEST). Ce que vous choisissez est mis dans le presse-papiers ; collez-le avec Ctrl+V.</translation>
    </message>
    <message id="accessibility.unavailable.title">
        <source></source>
        <extracomment>Notification title: this session does not let programs type</extracomment>
        <translation>Brimlo ne peut pas coller à votre place ici</translation>
    </message>
    <message id="alert.clear_confirm">
        <source></source>
        <extracomment>Clear confirm button</extracomment>
        <translation>Effacer</translation>
    </message>
    <message id="alert.clear_message">
        <source></source>
        <extracomment>Clear history alert message</extracomment>
        <translation>Tous les textes copiés seront supprimés, sans retour possible.</translation>
    </message>
    <message id="alert.clear_title">
        <source></source>
        <extracomment>Clear history alert title</extracomment>
        <translation>Effacer l’historique ?</translation>
    </message>
    <message id="common.cancel">
        <source></source>
        <extracomment>Cancel button</extracomment>
        <translation>Annuler</translation>
    </message>
    <message id="footer.auto_apply">
        <source></source>
        <extracomment>Auto-apply iPhone clips toggle</extracomment>
        <translation>Copier aussitôt ce qu’envoie le téléphone</translation>
    </message>
    <message id="footer.ax_required">
        <source></source>
        <extracomment>Accessibility permission notice</extracomment>
        <translation>Cette session ne laisse pas Brimlo coller pour vous.</translation>
    </message>
    <message id="footer.check_updates">
        <source></source>
        <extracomment>Check for updates button</extracomment>
        <translation>Rechercher des mises à jour</translation>
    </message>
    <message id="footer.clear_history">
        <source></source>
        <extracomment>Clear history button</extracomment>
        <translation>Effacer l’historique…</translation>
    </message>
    <message id="footer.exclude_passwords">
        <source></source>
        <extracomment>Exclude password-like text toggle</extracomment>
        <translation>Ignorer ce qui ressemble à un mot de passe</translation>
    </message>
    <message id="footer.quick_paste">
        <source></source>
        <extracomment>Quick paste toggle</extracomment>
        <translation>Collage rapide avec Maj+Super+V</translation>
    </message>
    <message id="footer.quit">
        <source></source>
        <extracomment>Quit app button</extracomment>
        <translation>Quitter Brimlo</translation>
    </message>
    <message id="footer.show_onboarding">
        <source></source>
        <extracomment>Show onboarding again button</extracomment>
        <translation>Revoir la présentation</translation>
    </message>
    <message id="footer.sync">
        <source></source>
        <extracomment>Sync button</extracomment>
        <translation>Synchroniser</translation>
    </message>
    <message id="menu.count" numerus="yes">
        <source></source>
        <extracomment>History item count in header</extracomment>
        <translation>
            <numerusform>%Ln extrait</numerusform>
            <numerusform>%Ln extraits</numerusform>
        </translation>
    </message>
    <message id="menu.empty">
        <source></source>
        <extracomment>Empty history placeholder</extracomment>
        <translation>Rien de copié pour l’instant. Copiez un texte : il sera ici.</translation>
    </message>
    <message id="menu.history_range">
        <source></source>
        <extracomment>History page range: start, end, total</extracomment>
        <translation>%lld–%lld sur %lld</translation>
    </message>
    <message id="menu.templates">
        <source></source>
        <extracomment>Templates section header</extracomment>
        <translation>Modèles</translation>
    </message>
    <message id="notify.copied.body">
        <source></source>
        <extracomment>Notification body: press Cmd-V</extracomment>
        <translation>Appuyez sur Ctrl+V pour le coller.</translation>
    </message>
    <message id="notify.copied.title">
        <source></source>
        <extracomment>Notification title: copied</extracomment>
        <translation>Copié</translation>
    </message>
    <message id="onboarding.ax.button">
        <source></source>
        <extracomment>Allow accessibility button</extracomment>
        <translation>Demander l’accès</translation>
    </message>
    <message id="onboarding.ax.granted">
        <source></source>
        <extracomment>Accessibility granted status</extracomment>
        <translation>Brimlo peut coller pour vous</translation>
    </message>
    <message id="onboarding.ax.note">
        <source></source>
        <extracomment>Accessibility note</extracomment>
        <translation>Sans accès, votre choix est placé dans le presse‑papiers et vous appuyez vous-même sur Ctrl+V.</translation>
    </message>
    <message id="onboarding.back">
        <source></source>
        <extracomment>Onboarding back button</extracomment>
        <translation>Retour</translation>
    </message>
    <message id="onboarding.next">
        <source></source>
        <extracomment>Onboarding next button</extracomment>
        <translation>Suivant</translation>
    </message>
    <message id="onboarding.practice.body">
        <source></source>
        <extracomment>Practice step body</extracomment>
        <translation>Copiez cette phrase, puis retrouvez-la.</translation>
    </message>
    <message id="onboarding.practice.copy">
        <source></source>
        <extracomment>Copy sample button</extracomment>
        <translation>Copier</translation>
    </message>
    <message id="onboarding.practice.paste_placeholder">
        <source></source>
        <extracomment>Practice paste placeholder</extracomment>
        <translation>Collez ici</translation>
    </message>
    <message id="onboarding.practice.pasted">
        <source></source>
        <extracomment>Practice: pasted feedback</extracomment>
        <translation>C’est tout.</translation>
    </message>
    <message id="onboarding.practice.sample">
        <source></source>
        <extracomment>Practice sample text</extracomment>
        <translation>Le thé est prêt, et le gâteau est pour tous.</translation>
    </message>
    <message id="onboarding.practice.stacked">
        <source></source>
        <extracomment>Practice: stacked feedback</extracomment>
        <translation>Elle est maintenant dans votre historique.</translation>
    </message>
    <message id="onboarding.practice.step1">
        <source></source>
        <extracomment>Practice step 1 guide</extracomment>
        <translation>Appuyez sur le bouton, ou sélectionnez la phrase et appuyez sur Ctrl+C.</translation>
    </message>
    <message id="onboarding.practice.step2">
        <source></source>
        <extracomment>Practice step 2 guide</extracomment>
        <translation>Cliquez dans le champ et appuyez sur Ctrl+V. Essayez ensuite Maj+Super+V puis Entrée.</translation>
    </message>
    <message id="onboarding.practice.title">
        <source></source>
        <extracomment>Practice step title</extracomment>
        <translation>Essayez une fois</translation>
    </message>
    <message id="onboarding.start">
        <source></source>
        <extracomment>Onboarding finish button</extracomment>
        <translation>Commencer</translation>
    </message>
    <message id="onboarding.step1.body">
        <source></source>
        <extracomment>Onboarding step 1 body</extracomment>
        <translation>Brimlo garde chaque texte que vous copiez. Appuyez sur Maj+Super+V dans n’importe quel programme, tapez quelques lettres de ce que vous cherchez, puis Entrée : le texte est là où vous travailliez.</translation>
    </message>
    <message id="onboarding.step1.title">
        <source></source>
        <extracomment>Onboarding step 1 title</extracomment>
        <translation>Rien de ce que vous copiez n’est perdu</translation>
    </message>
    <message id="onboarding.step2.body">
        <source></source>
        <extracomment>Onboarding step 2 body</extracomment>
        <translation>L’accès signifie que cette session laisse Brimlo appuyer sur Ctrl+V pour vous, dans la fenêtre où vous travailliez. Sur un bureau X11 c’est en général le cas, et il n’y a rien à régler.</translation>
    </message>
    <message id="onboarding.step2.title">
        <source></source>
        <extracomment>Onboarding step 2 title</extracomment>
        <translation>Laissez Brimlo coller pour vous</translation>
    </message>
    <message id="onboarding.step3.body">
        <source></source>
        <extracomment>Onboarding step 3 body</extracomment>
        <translation>Vos machines peuvent partager un historique, et votre téléphone peut leur transmettre un texte. Il suffit d’une ligne dans ~/⁠.config/⁠BrimloMac/⁠account ; sans elle, tout reste sur cette machine.</translation>
    </message>
    <message id="onboarding.step3.title">
        <source></source>
        <extracomment>Onboarding step 3 title</extracomment>
        <translation>Votre téléphone et vos autres machines</translation>
    </message>
    <message id="onboarding.window_title">
        <source></source>
        <extracomment>Onboarding window title, for the taskbar</extracomment>
        <translation>Bienvenue dans Brimlo</translation>
    </message>
    <message id="pager.prev">
        <source></source>
        <extracomment>Pager previous button</extracomment>
        <translation>Précédents</translation>
    </message>
    <message id="palette.empty">
        <source></source>
        <extracomment>Palette empty history</extracomment>
        <translation>Rien pour l’instant</translation>
    </message>
    <message id="palette.filter_placeholder">
        <source></source>
        <extracomment>Palette filter placeholder</extracomment>
        <translation>Filtrer</translation>
    </message>
    <message id="palette.hint.close">
        <source></source>
        <extracomment>Hint: close</extracomment>
        <translation>Fermer</translation>
    </message>
    <message id="palette.hint.page">
        <source></source>
        <extracomment>Hint: page jump</extracomment>
        <translation>Page</translation>
    </message>
    <message id="palette.hint.paste_direct">
        <source></source>
        <extracomment>Hint: instant paste</extracomment>
        <translation>Coller</translation>
    </message>
    <message id="palette.hint.select">
        <source></source>
        <extracomment>Hint: select</extracomment>
        <translation>Choisir</translation>
    </message>
    <message id="palette.hint.tab">
        <source></source>
        <extracomment>Hint: switch section</extracomment>
        <translation>Basculer</translation>
    </message>
    <message id="palette.no_match">
        <source></source>
        <extracomment>Palette no matching clips</extracomment>
        <translation>Aucun résultat</translation>
    </message>
    <message id="palette.tab_clips">
        <source></source>
        <extracomment>Clips tab</extracomment>
        <translation>Historique</translation>
    </message>
    <message id="palette.tab_templates">
        <source></source>
        <extracomment>Templates tab</extracomment>
        <translation>Modèles</translation>
    </message>
    <message id="palette.title">
        <source></source>
        <extracomment>Quick paste palette title</extracomment>
        <translation>Collage rapide</translation>
    </message>
    <message id="sync.status.applied_iphone">
        <source></source>
        <extracomment>Sync status: applied iPhone copy</extracomment>
        <translation>Texte du téléphone copié</translation>
    </message>
    <message id="sync.status.done" numerus="yes">
        <source></source>
        <extracomment>Sync status: done with count</extracomment>
        <translation>
            <numerusform>Synchronisé, %Ln extrait</numerusform>
            <numerusform>Synchronisé, %Ln extraits</numerusform>
        </translation>
    </message>
    <message id="sync.status.idle">
        <source></source>
        <extracomment>Sync status: not synced</extracomment>
        <translation>Pas encore synchronisé</translation>
    </message>
    <message id="sync.status.unavailable">
        <source></source>
        <extracomment>Sync status: iCloud unavailable</extracomment>
        <translation>Synchronisation indisponible</translation>
    </message>
    <message id="updates.available">
        <source></source>
        <extracomment>Updates: a newer version. %1$@ is new, %2$@ is the version that runs</extracomment>
        <translation>Brimlo %1$@ est sorti. Vous avez %2$@.</translation>
    </message>
    <message id="updates.checking">
        <source></source>
        <extracomment>Updates: asking the server</extracomment>
        <translation>Recherche de mises à jour…</translation>
    </message>
    <message id="updates.close">
        <source></source>
        <extracomment>Updates: button that closes a message</extracomment>
        <translation>Fermer</translation>
    </message>
    <message id="updates.download">
        <source></source>
        <extracomment>Updates: download button</extracomment>
        <translation>Ouvrir la page de téléchargement</translation>
    </message>
    <message id="updates.insecure">
        <source></source>
        <extracomment>Updates: the answer would not have come over HTTPS</extracomment>
        <translation>Le serveur de mises à jour mène à une connexion non sécurisée. Rien n’a été lu.</translation>
    </message>
    <message id="updates.later">
        <source></source>
        <extracomment>Updates: later button</extracomment>
        <translation>Plus tard</translation>
    </message>
    <message id="updates.latest">
        <source></source>
        <extracomment>Updates: nothing newer. %1$@ is the version that runs</extracomment>
        <translation>Vous avez la dernière version, %1$@.</translation>
    </message>
    <message id="updates.malformed">
        <source></source>
        <extracomment>Updates: the answer makes no sense</extracomment>
        <translation>La réponse du serveur de mises à jour est incompréhensible.</translation>
    </message>
    <message id="updates.packages">
        <source></source>
        <extracomment>Updates: this build has no feed</extracomment>
        <translation>Les mises à jour arrivent avec les paquets de votre système.</translation>
    </message>
    <message id="updates.skip">
        <source></source>
        <extracomment>Updates: skip button</extracomment>
        <translation>Ignorer cette version</translation>
    </message>
    <message id="updates.unreachable">
        <source></source>
        <extracomment>Updates: the server does not answer</extracomment>
        <translation>Le serveur de mises à jour ne répond pas.</translation>
    </message>
    <message id="updates.whats_new">
        <source></source>
        <extracomment>Updates: heading of the release notes</extracomment>
        <translation>Nouveautés</translation>
    </message>
    <message id="updates.window_title">
        <source></source>
        <extracomment>Updates window title</extracomment>
        <translation>Mises à jour de Brimlo</translation>
    </message>
</context>
</TS>
