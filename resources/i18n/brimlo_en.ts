<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
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
        <translation>This session does not let programs type into other windows (the X server has no XTEST extension). What you choose is put on the clipboard; paste it with Ctrl+V.</translation>
    </message>
    <message id="accessibility.unavailable.title">
        <source></source>
        <extracomment>Notification title: this session does not let programs type</extracomment>
        <translation>Brimlo cannot paste for you here</translation>
    </message>
    <message id="alert.clear_confirm">
        <source></source>
        <extracomment>Clear confirm button</extracomment>
        <translation>Clear</translation>
    </message>
    <message id="alert.clear_message">
        <source></source>
        <extracomment>Clear history alert message</extracomment>
        <translation>Every copied text is deleted. This cannot be undone.</translation>
    </message>
    <message id="alert.clear_title">
        <source></source>
        <extracomment>Clear history alert title</extracomment>
        <translation>Clear the history?</translation>
    </message>
    <message id="common.cancel">
        <source></source>
        <extracomment>Cancel button</extracomment>
        <translation>Cancel</translation>
    </message>
    <message id="footer.auto_apply">
        <source></source>
        <extracomment>Auto-apply iPhone clips toggle</extracomment>
        <translation>Copy what the phone sends at once</translation>
    </message>
    <message id="footer.ax_required">
        <source></source>
        <extracomment>Accessibility permission notice</extracomment>
        <translation>This session does not let Brimlo paste for you.</translation>
    </message>
    <message id="footer.check_updates">
        <source></source>
        <extracomment>Check for updates button</extracomment>
        <translation>Check for updates</translation>
    </message>
    <message id="footer.clear_history">
        <source></source>
        <extracomment>Clear history button</extracomment>
        <translation>Clear history…</translation>
    </message>
    <message id="footer.exclude_passwords">
        <source></source>
        <extracomment>Exclude password-like text toggle</extracomment>
        <translation>Leave out what looks like a password</translation>
    </message>
    <message id="footer.quick_paste">
        <source></source>
        <extracomment>Quick paste toggle</extracomment>
        <translation>Quick paste with Shift+Super+V</translation>
    </message>
    <message id="footer.quit">
        <source></source>
        <extracomment>Quit app button</extracomment>
        <translation>Quit Brimlo</translation>
    </message>
    <message id="footer.show_onboarding">
        <source></source>
        <extracomment>Show onboarding again button</extracomment>
        <translation>Show the introduction</translation>
    </message>
    <message id="footer.sync">
        <source></source>
        <extracomment>Sync button</extracomment>
        <translation>Sync</translation>
    </message>
    <message id="menu.count" numerus="yes">
        <source></source>
        <extracomment>History item count in header</extracomment>
        <translation>
            <numerusform>%Ln clip</numerusform>
            <numerusform>%Ln clips</numerusform>
        </translation>
    </message>
    <message id="menu.empty">
        <source></source>
        <extracomment>Empty history placeholder</extracomment>
        <translation>Nothing copied yet. Copy a text, and it is here.</translation>
    </message>
    <message id="menu.history_range">
        <source></source>
        <extracomment>History page range: start, end, total</extracomment>
        <translation>%lld–%lld of %lld</translation>
    </message>
    <message id="menu.templates">
        <source></source>
        <extracomment>Templates section header</extracomment>
        <translation>Templates</translation>
    </message>
    <message id="notify.copied.body">
        <source></source>
        <extracomment>Notification body: press Cmd-V</extracomment>
        <translation>Press Ctrl+V to paste it.</translation>
    </message>
    <message id="notify.copied.title">
        <source></source>
        <extracomment>Notification title: copied</extracomment>
        <translation>Copied</translation>
    </message>
    <message id="onboarding.ax.button">
        <source></source>
        <extracomment>Allow accessibility button</extracomment>
        <translation>Ask for access</translation>
    </message>
    <message id="onboarding.ax.granted">
        <source></source>
        <extracomment>Accessibility granted status</extracomment>
        <translation>Brimlo may paste for you</translation>
    </message>
    <message id="onboarding.ax.note">
        <source></source>
        <extracomment>Accessibility note</extracomment>
        <translation>Without access, what you choose is put on the clipboard, and you press Ctrl+V yourself.</translation>
    </message>
    <message id="onboarding.back">
        <source></source>
        <extracomment>Onboarding back button</extracomment>
        <translation>Back</translation>
    </message>
    <message id="onboarding.next">
        <source></source>
        <extracomment>Onboarding next button</extracomment>
        <translation>Next</translation>
    </message>
    <message id="onboarding.practice.body">
        <source></source>
        <extracomment>Practice step body</extracomment>
        <translation>Copy this sentence, then bring it back.</translation>
    </message>
    <message id="onboarding.practice.copy">
        <source></source>
        <extracomment>Copy sample button</extracomment>
        <translation>Copy</translation>
    </message>
    <message id="onboarding.practice.paste_placeholder">
        <source></source>
        <extracomment>Practice paste placeholder</extracomment>
        <translation>Paste here</translation>
    </message>
    <message id="onboarding.practice.pasted">
        <source></source>
        <extracomment>Practice: pasted feedback</extracomment>
        <translation>That is all there is to it.</translation>
    </message>
    <message id="onboarding.practice.sample">
        <source></source>
        <extracomment>Practice sample text</extracomment>
        <translation>The kettle is on, and there is cake for everyone.</translation>
    </message>
    <message id="onboarding.practice.stacked">
        <source></source>
        <extracomment>Practice: stacked feedback</extracomment>
        <translation>It is in your history now.</translation>
    </message>
    <message id="onboarding.practice.step1">
        <source></source>
        <extracomment>Practice step 1 guide</extracomment>
        <translation>Press the button, or select the sentence and press Ctrl+C.</translation>
    </message>
    <message id="onboarding.practice.step2">
        <source></source>
        <extracomment>Practice step 2 guide</extracomment>
        <translation>Click into the field and press Ctrl+V. Then try Shift+Super+V and Return.</translation>
    </message>
    <message id="onboarding.practice.title">
        <source></source>
        <extracomment>Practice step title</extracomment>
        <translation>Try it once</translation>
    </message>
    <message id="onboarding.start">
        <source></source>
        <extracomment>Onboarding finish button</extracomment>
        <translation>Start</translation>
    </message>
    <message id="onboarding.step1.body">
        <source></source>
        <extracomment>Onboarding step 1 body</extracomment>
        <translation>Brimlo keeps every text you copy. Press Shift+Super+V in any program, type a few letters of what you are looking for and press Return: it stands where you were working.</translation>
    </message>
    <message id="onboarding.step1.title">
        <source></source>
        <extracomment>Onboarding step 1 title</extracomment>
        <translation>Nothing you copy is lost</translation>
    </message>
    <message id="onboarding.step2.body">
        <source></source>
        <extracomment>Onboarding step 2 body</extracomment>
        <translation>Accessibility access means that this session lets Brimlo press Ctrl+V for you, in the window you were working in. On an X11 desktop that is usually so, and there is nothing to set up.</translation>
    </message>
    <message id="onboarding.step2.title">
        <source></source>
        <extracomment>Onboarding step 2 title</extracomment>
        <translation>Let Brimlo paste for you</translation>
    </message>
    <message id="onboarding.step3.body">
        <source></source>
        <extracomment>Onboarding step 3 body</extracomment>
        <translation>Your machines can share one history, and your phone can hand a text over. That takes one line in ~/⁠.config/⁠BrimloMac/⁠account; without it, everything stays on this machine.</translation>
    </message>
    <message id="onboarding.step3.title">
        <source></source>
        <extracomment>Onboarding step 3 title</extracomment>
        <translation>Your phone and your other machines</translation>
    </message>
    <message id="onboarding.window_title">
        <source></source>
        <extracomment>Onboarding window title, for the taskbar</extracomment>
        <translation>Welcome to Brimlo</translation>
    </message>
    <message id="pager.prev">
        <source></source>
        <extracomment>Pager previous button</extracomment>
        <translation>Previous</translation>
    </message>
    <message id="palette.empty">
        <source></source>
        <extracomment>Palette empty history</extracomment>
        <translation>Nothing here yet</translation>
    </message>
    <message id="palette.filter_placeholder">
        <source></source>
        <extracomment>Palette filter placeholder</extracomment>
        <translation>Filter</translation>
    </message>
    <message id="palette.hint.close">
        <source></source>
        <extracomment>Hint: close</extracomment>
        <translation>Close</translation>
    </message>
    <message id="palette.hint.page">
        <source></source>
        <extracomment>Hint: page jump</extracomment>
        <translation>Page</translation>
    </message>
    <message id="palette.hint.paste_direct">
        <source></source>
        <extracomment>Hint: instant paste</extracomment>
        <translation>Paste</translation>
    </message>
    <message id="palette.hint.select">
        <source></source>
        <extracomment>Hint: select</extracomment>
        <translation>Select</translation>
    </message>
    <message id="palette.hint.tab">
        <source></source>
        <extracomment>Hint: switch section</extracomment>
        <translation>Switch</translation>
    </message>
    <message id="palette.no_match">
        <source></source>
        <extracomment>Palette no matching clips</extracomment>
        <translation>No matches</translation>
    </message>
    <message id="palette.tab_clips">
        <source></source>
        <extracomment>Clips tab</extracomment>
        <translation>Clips</translation>
    </message>
    <message id="palette.tab_templates">
        <source></source>
        <extracomment>Templates tab</extracomment>
        <translation>Templates</translation>
    </message>
    <message id="palette.title">
        <source></source>
        <extracomment>Quick paste palette title</extracomment>
        <translation>Quick Paste</translation>
    </message>
    <message id="sync.status.applied_iphone">
        <source></source>
        <extracomment>Sync status: applied iPhone copy</extracomment>
        <translation>Copied what your phone sent</translation>
    </message>
    <message id="sync.status.done" numerus="yes">
        <source></source>
        <extracomment>Sync status: done with count</extracomment>
        <translation>
            <numerusform>Synced, %Ln clip</numerusform>
            <numerusform>Synced, %Ln clips</numerusform>
        </translation>
    </message>
    <message id="sync.status.idle">
        <source></source>
        <extracomment>Sync status: not synced</extracomment>
        <translation>Not synced yet</translation>
    </message>
    <message id="sync.status.unavailable">
        <source></source>
        <extracomment>Sync status: iCloud unavailable</extracomment>
        <translation>Sync is not available</translation>
    </message>
    <message id="updates.available">
        <source></source>
        <extracomment>Updates: a newer version. %1$@ is new, %2$@ is the version that runs</extracomment>
        <translation>Brimlo %1$@ is out. You have %2$@.</translation>
    </message>
    <message id="updates.checking">
        <source></source>
        <extracomment>Updates: asking the server</extracomment>
        <translation>Looking for updates…</translation>
    </message>
    <message id="updates.close">
        <source></source>
        <extracomment>Updates: button that closes a message</extracomment>
        <translation>Close</translation>
    </message>
    <message id="updates.download">
        <source></source>
        <extracomment>Updates: download button</extracomment>
        <translation>Open the download page</translation>
    </message>
    <message id="updates.insecure">
        <source></source>
        <extracomment>Updates: the answer would not have come over HTTPS</extracomment>
        <translation>The update server leads to a connection that is not secure. Nothing was read.</translation>
    </message>
    <message id="updates.later">
        <source></source>
        <extracomment>Updates: later button</extracomment>
        <translation>Later</translation>
    </message>
    <message id="updates.latest">
        <source></source>
        <extracomment>Updates: nothing newer. %1$@ is the version that runs</extracomment>
        <translation>You have the latest version, %1$@.</translation>
    </message>
    <message id="updates.malformed">
        <source></source>
        <extracomment>Updates: the answer makes no sense</extracomment>
        <translation>The update server’s answer makes no sense.</translation>
    </message>
    <message id="updates.packages">
        <source></source>
        <extracomment>Updates: this build has no feed</extracomment>
        <translation>Updates come with your system’s packages.</translation>
    </message>
    <message id="updates.skip">
        <source></source>
        <extracomment>Updates: skip button</extracomment>
        <translation>Skip this version</translation>
    </message>
    <message id="updates.unreachable">
        <source></source>
        <extracomment>Updates: the server does not answer</extracomment>
        <translation>The update server does not answer.</translation>
    </message>
    <message id="updates.whats_new">
        <source></source>
        <extracomment>Updates: heading of the release notes</extracomment>
        <translation>What is new</translation>
    </message>
    <message id="updates.window_title">
        <source></source>
        <extracomment>Updates window title</extracomment>
        <translation>Brimlo Updates</translation>
    </message>
</context>
</TS>
