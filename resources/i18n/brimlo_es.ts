<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
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
        <translation>Esta sesión no permite que los programas escriban en otras ventanas (el servidor X no tiene la extensión XTEST). Lo que elija quedará en el portapapeles; péguelo con Ctrl+V.</translation>
    </message>
    <message id="accessibility.unavailable.title">
        <source></source>
        <extracomment>Notification title: this session does not let programs type</extracomment>
        <translation>Brimlo no puede pegar por usted aquí</translation>
    </message>
    <message id="alert.clear_confirm">
        <source></source>
        <extracomment>Clear confirm button</extracomment>
        <translation>Borrar</translation>
    </message>
    <message id="alert.clear_message">
        <source></source>
        <extracomment>Clear history alert message</extracomment>
        <translation>Se eliminarán todos los textos copiados. No se puede deshacer.</translation>
    </message>
    <message id="alert.clear_title">
        <source></source>
        <extracomment>Clear history alert title</extracomment>
        <translation>¿Borrar el historial?</translation>
    </message>
    <message id="common.cancel">
        <source></source>
        <extracomment>Cancel button</extracomment>
        <translation>Cancelar</translation>
    </message>
    <message id="footer.auto_apply">
        <source></source>
        <extracomment>Auto-apply iPhone clips toggle</extracomment>
        <translation>Copiar al momento lo que envía el teléfono</translation>
    </message>
    <message id="footer.ax_required">
        <source></source>
        <extracomment>Accessibility permission notice</extracomment>
        <translation>Esta sesión no permite que Brimlo pegue por usted.</translation>
    </message>
    <message id="footer.check_updates">
        <source></source>
        <extracomment>Check for updates button</extracomment>
        <translation>Buscar actualizaciones</translation>
    </message>
    <message id="footer.clear_history">
        <source></source>
        <extracomment>Clear history button</extracomment>
        <translation>Borrar el historial…</translation>
    </message>
    <message id="footer.exclude_passwords">
        <source></source>
        <extracomment>Exclude password-like text toggle</extracomment>
        <translation>Omitir lo que parezca una contraseña</translation>
    </message>
    <message id="footer.quick_paste">
        <source></source>
        <extracomment>Quick paste toggle</extracomment>
        <translation>Pegado rápido con Mayús+Súper+V</translation>
    </message>
    <message id="footer.quit">
        <source></source>
        <extracomment>Quit app button</extracomment>
        <translation>Salir de Brimlo</translation>
    </message>
    <message id="footer.show_onboarding">
        <source></source>
        <extracomment>Show onboarding again button</extracomment>
        <translation>Mostrar la introducción</translation>
    </message>
    <message id="footer.sync">
        <source></source>
        <extracomment>Sync button</extracomment>
        <translation>Sincronizar</translation>
    </message>
    <message id="menu.count" numerus="yes">
        <source></source>
        <extracomment>History item count in header</extracomment>
        <translation>
            <numerusform>%Ln recorte</numerusform>
            <numerusform>%Ln recortes</numerusform>
        </translation>
    </message>
    <message id="menu.empty">
        <source></source>
        <extracomment>Empty history placeholder</extracomment>
        <translation>Nada copiado todavía. Copie un texto y aparecerá aquí.</translation>
    </message>
    <message id="menu.history_range">
        <source></source>
        <extracomment>History page range: start, end, total</extracomment>
        <translation>%lld–%lld de %lld</translation>
    </message>
    <message id="menu.templates">
        <source></source>
        <extracomment>Templates section header</extracomment>
        <translation>Plantillas</translation>
    </message>
    <message id="notify.copied.body">
        <source></source>
        <extracomment>Notification body: press Cmd-V</extracomment>
        <translation>Pulse Ctrl+V para pegarlo.</translation>
    </message>
    <message id="notify.copied.title">
        <source></source>
        <extracomment>Notification title: copied</extracomment>
        <translation>Copiado</translation>
    </message>
    <message id="onboarding.ax.button">
        <source></source>
        <extracomment>Allow accessibility button</extracomment>
        <translation>Solicitar acceso</translation>
    </message>
    <message id="onboarding.ax.granted">
        <source></source>
        <extracomment>Accessibility granted status</extracomment>
        <translation>Brimlo puede pegar por usted</translation>
    </message>
    <message id="onboarding.ax.note">
        <source></source>
        <extracomment>Accessibility note</extracomment>
        <translation>Sin acceso, lo que elija queda en el portapapeles y usted pulsa Ctrl+V.</translation>
    </message>
    <message id="onboarding.back">
        <source></source>
        <extracomment>Onboarding back button</extracomment>
        <translation>Atrás</translation>
    </message>
    <message id="onboarding.next">
        <source></source>
        <extracomment>Onboarding next button</extracomment>
        <translation>Siguiente</translation>
    </message>
    <message id="onboarding.practice.body">
        <source></source>
        <extracomment>Practice step body</extracomment>
        <translation>Copie esta frase y recupérela.</translation>
    </message>
    <message id="onboarding.practice.copy">
        <source></source>
        <extracomment>Copy sample button</extracomment>
        <translation>Copiar</translation>
    </message>
    <message id="onboarding.practice.paste_placeholder">
        <source></source>
        <extracomment>Practice paste placeholder</extracomment>
        <translation>Pegue aquí</translation>
    </message>
    <message id="onboarding.practice.pasted">
        <source></source>
        <extracomment>Practice: pasted feedback</extracomment>
        <translation>Eso es todo.</translation>
    </message>
    <message id="onboarding.practice.sample">
        <source></source>
        <extracomment>Practice sample text</extracomment>
        <translation>El café está listo y hay pastel para todos.</translation>
    </message>
    <message id="onboarding.practice.stacked">
        <source></source>
        <extracomment>Practice: stacked feedback</extracomment>
        <translation>Ya está en su historial.</translation>
    </message>
    <message id="onboarding.practice.step1">
        <source></source>
        <extracomment>Practice step 1 guide</extracomment>
        <translation>Pulse el botón, o seleccione la frase y pulse Ctrl+C.</translation>
    </message>
    <message id="onboarding.practice.step2">
        <source></source>
        <extracomment>Practice step 2 guide</extracomment>
        <translation>Haga clic en el campo y pulse Ctrl+V. Después pruebe Mayús+Super+V e Intro.</translation>
    </message>
    <message id="onboarding.practice.title">
        <source></source>
        <extracomment>Practice step title</extracomment>
        <translation>Pruébelo una vez</translation>
    </message>
    <message id="onboarding.start">
        <source></source>
        <extracomment>Onboarding finish button</extracomment>
        <translation>Empezar</translation>
    </message>
    <message id="onboarding.step1.body">
        <source></source>
        <extracomment>Onboarding step 1 body</extracomment>
        <translation>Brimlo guarda cada texto que copia. Pulse Mayús+Super+V en cualquier programa, escriba unas letras de lo que busca y pulse Intro: aparece donde estaba trabajando.</translation>
    </message>
    <message id="onboarding.step1.title">
        <source></source>
        <extracomment>Onboarding step 1 title</extracomment>
        <translation>Nada de lo que copia se pierde</translation>
    </message>
    <message id="onboarding.step2.body">
        <source></source>
        <extracomment>Onboarding step 2 body</extracomment>
        <translation>El acceso significa que esta sesión permite a Brimlo pulsar Ctrl+V por usted, en la ventana en la que trabajaba. En un escritorio X11 suele ser así y no hay nada que configurar.</translation>
    </message>
    <message id="onboarding.step2.title">
        <source></source>
        <extracomment>Onboarding step 2 title</extracomment>
        <translation>Deje que Brimlo pegue por usted</translation>
    </message>
    <message id="onboarding.step3.body">
        <source></source>
        <extracomment>Onboarding step 3 body</extracomment>
        <translation>Sus equipos pueden compartir un historial y su teléfono puede enviarles un texto. Basta una línea en ~/⁠.config/⁠BrimloMac/⁠account; sin ella, todo se queda en este equipo.</translation>
    </message>
    <message id="onboarding.step3.title">
        <source></source>
        <extracomment>Onboarding step 3 title</extracomment>
        <translation>Su teléfono y sus otros equipos</translation>
    </message>
    <message id="onboarding.window_title">
        <source></source>
        <extracomment>Onboarding window title, for the taskbar</extracomment>
        <translation>Le damos la bienvenida a Brimlo</translation>
    </message>
    <message id="pager.prev">
        <source></source>
        <extracomment>Pager previous button</extracomment>
        <translation>Anterior</translation>
    </message>
    <message id="palette.empty">
        <source></source>
        <extracomment>Palette empty history</extracomment>
        <translation>Aún no hay nada</translation>
    </message>
    <message id="palette.filter_placeholder">
        <source></source>
        <extracomment>Palette filter placeholder</extracomment>
        <translation>Filtrar</translation>
    </message>
    <message id="palette.hint.close">
        <source></source>
        <extracomment>Hint: close</extracomment>
        <translation>Cerrar</translation>
    </message>
    <message id="palette.hint.page">
        <source></source>
        <extracomment>Hint: page jump</extracomment>
        <translation>Página</translation>
    </message>
    <message id="palette.hint.paste_direct">
        <source></source>
        <extracomment>Hint: instant paste</extracomment>
        <translation>Pegar</translation>
    </message>
    <message id="palette.hint.select">
        <source></source>
        <extracomment>Hint: select</extracomment>
        <translation>Elegir</translation>
    </message>
    <message id="palette.hint.tab">
        <source></source>
        <extracomment>Hint: switch section</extracomment>
        <translation>Cambiar</translation>
    </message>
    <message id="palette.no_match">
        <source></source>
        <extracomment>Palette no matching clips</extracomment>
        <translation>Sin resultados</translation>
    </message>
    <message id="palette.tab_clips">
        <source></source>
        <extracomment>Clips tab</extracomment>
        <translation>Historial</translation>
    </message>
    <message id="palette.tab_templates">
        <source></source>
        <extracomment>Templates tab</extracomment>
        <translation>Plantillas</translation>
    </message>
    <message id="palette.title">
        <source></source>
        <extracomment>Quick paste palette title</extracomment>
        <translation>Pegado rápido</translation>
    </message>
    <message id="sync.status.applied_iphone">
        <source></source>
        <extracomment>Sync status: applied iPhone copy</extracomment>
        <translation>Copiado el texto del teléfono</translation>
    </message>
    <message id="sync.status.done" numerus="yes">
        <source></source>
        <extracomment>Sync status: done with count</extracomment>
        <translation>
            <numerusform>Sincronizado, %Ln recorte</numerusform>
            <numerusform>Sincronizados, %Ln recortes</numerusform>
        </translation>
    </message>
    <message id="sync.status.idle">
        <source></source>
        <extracomment>Sync status: not synced</extracomment>
        <translation>Aún sin sincronizar</translation>
    </message>
    <message id="sync.status.unavailable">
        <source></source>
        <extracomment>Sync status: iCloud unavailable</extracomment>
        <translation>Sincronización no disponible</translation>
    </message>
    <message id="updates.available">
        <source></source>
        <extracomment>Updates: a newer version. %1$@ is new, %2$@ is the version that runs</extracomment>
        <translation>Ya está Brimlo %1$@. Usted tiene %2$@.</translation>
    </message>
    <message id="updates.checking">
        <source></source>
        <extracomment>Updates: asking the server</extracomment>
        <translation>Buscando actualizaciones…</translation>
    </message>
    <message id="updates.close">
        <source></source>
        <extracomment>Updates: button that closes a message</extracomment>
        <translation>Cerrar</translation>
    </message>
    <message id="updates.download">
        <source></source>
        <extracomment>Updates: download button</extracomment>
        <translation>Abrir la página de descarga</translation>
    </message>
    <message id="updates.insecure">
        <source></source>
        <extracomment>Updates: the answer would not have come over HTTPS</extracomment>
        <translation>El servidor de actualizaciones lleva a una conexión no segura. No se leyó nada.</translation>
    </message>
    <message id="updates.later">
        <source></source>
        <extracomment>Updates: later button</extracomment>
        <translation>Más tarde</translation>
    </message>
    <message id="updates.latest">
        <source></source>
        <extracomment>Updates: nothing newer. %1$@ is the version that runs</extracomment>
        <translation>Tiene la última versión, %1$@.</translation>
    </message>
    <message id="updates.malformed">
        <source></source>
        <extracomment>Updates: the answer makes no sense</extracomment>
        <translation>La respuesta del servidor de actualizaciones no se entiende.</translation>
    </message>
    <message id="updates.packages">
        <source></source>
        <extracomment>Updates: this build has no feed</extracomment>
        <translation>Las actualizaciones llegan con los paquetes de su sistema.</translation>
    </message>
    <message id="updates.skip">
        <source></source>
        <extracomment>Updates: skip button</extracomment>
        <translation>Omitir esta versión</translation>
    </message>
    <message id="updates.unreachable">
        <source></source>
        <extracomment>Updates: the server does not answer</extracomment>
        <translation>El servidor de actualizaciones no responde.</translation>
    </message>
    <message id="updates.whats_new">
        <source></source>
        <extracomment>Updates: heading of the release notes</extracomment>
        <translation>Novedades</translation>
    </message>
    <message id="updates.window_title">
        <source></source>
        <extracomment>Updates window title</extracomment>
        <translation>Actualizaciones de Brimlo</translation>
    </message>
</context>
</TS>
