<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
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
        <translation>此会话不允许程序向其他窗口输入（X 服务器没有 XTEST 扩展）。所选内容会放到剪贴板，请按 Ctrl+V 粘贴。</translation>
    </message>
    <message id="accessibility.unavailable.title">
        <source></source>
        <extracomment>Notification title: this session does not let programs type</extracomment>
        <translation>Brimlo 无法在此处自动粘贴</translation>
    </message>
    <message id="alert.clear_confirm">
        <source></source>
        <extracomment>Clear confirm button</extracomment>
        <translation>清除</translation>
    </message>
    <message id="alert.clear_message">
        <source></source>
        <extracomment>Clear history alert message</extracomment>
        <translation>所有复制的文本都会被删除，且无法恢复。</translation>
    </message>
    <message id="alert.clear_title">
        <source></source>
        <extracomment>Clear history alert title</extracomment>
        <translation>清除历史记录？</translation>
    </message>
    <message id="common.cancel">
        <source></source>
        <extracomment>Cancel button</extracomment>
        <translation>取消</translation>
    </message>
    <message id="footer.auto_apply">
        <source></source>
        <extracomment>Auto-apply iPhone clips toggle</extracomment>
        <translation>立即复制手机发来的文本</translation>
    </message>
    <message id="footer.ax_required">
        <source></source>
        <extracomment>Accessibility permission notice</extracomment>
        <translation>此会话不允许 Brimlo 代您粘贴。</translation>
    </message>
    <message id="footer.check_updates">
        <source></source>
        <extracomment>Check for updates button</extracomment>
        <translation>检查更新</translation>
    </message>
    <message id="footer.clear_history">
        <source></source>
        <extracomment>Clear history button</extracomment>
        <translation>清除历史记录…</translation>
    </message>
    <message id="footer.exclude_passwords">
        <source></source>
        <extracomment>Exclude password-like text toggle</extracomment>
        <translation>不保留类似密码的文本</translation>
    </message>
    <message id="footer.quick_paste">
        <source></source>
        <extracomment>Quick paste toggle</extracomment>
        <translation>用 Shift+Super+V 快速粘贴</translation>
    </message>
    <message id="footer.quit">
        <source></source>
        <extracomment>Quit app button</extracomment>
        <translation>退出 Brimlo</translation>
    </message>
    <message id="footer.show_onboarding">
        <source></source>
        <extracomment>Show onboarding again button</extracomment>
        <translation>显示入门介绍</translation>
    </message>
    <message id="footer.sync">
        <source></source>
        <extracomment>Sync button</extracomment>
        <translation>同步</translation>
    </message>
    <message id="menu.count" numerus="yes">
        <source></source>
        <extracomment>History item count in header</extracomment>
        <translation>
            <numerusform>%Ln 条</numerusform>
        </translation>
    </message>
    <message id="menu.empty">
        <source></source>
        <extracomment>Empty history placeholder</extracomment>
        <translation>还没有复制任何内容。复制的文本会出现在这里。</translation>
    </message>
    <message id="menu.history_range">
        <source></source>
        <extracomment>History page range: start, end, total</extracomment>
        <translation>第 %lld–%lld 条，共 %lld 条</translation>
    </message>
    <message id="menu.templates">
        <source></source>
        <extracomment>Templates section header</extracomment>
        <translation>模板</translation>
    </message>
    <message id="notify.copied.body">
        <source></source>
        <extracomment>Notification body: press Cmd-V</extracomment>
        <translation>按 Ctrl+V 即可粘贴。</translation>
    </message>
    <message id="notify.copied.title">
        <source></source>
        <extracomment>Notification title: copied</extracomment>
        <translation>已复制</translation>
    </message>
    <message id="onboarding.ax.button">
        <source></source>
        <extracomment>Allow accessibility button</extracomment>
        <translation>请求权限</translation>
    </message>
    <message id="onboarding.ax.granted">
        <source></source>
        <extracomment>Accessibility granted status</extracomment>
        <translation>Brimlo 可以替您粘贴</translation>
    </message>
    <message id="onboarding.ax.note">
        <source></source>
        <extracomment>Accessibility note</extracomment>
        <translation>没有权限时，所选内容会放到剪贴板，请自行按 Ctrl+V。</translation>
    </message>
    <message id="onboarding.back">
        <source></source>
        <extracomment>Onboarding back button</extracomment>
        <translation>上一步</translation>
    </message>
    <message id="onboarding.next">
        <source></source>
        <extracomment>Onboarding next button</extracomment>
        <translation>下一步</translation>
    </message>
    <message id="onboarding.practice.body">
        <source></source>
        <extracomment>Practice step body</extracomment>
        <translation>复制这句话，再把它找回来。</translation>
    </message>
    <message id="onboarding.practice.copy">
        <source></source>
        <extracomment>Copy sample button</extracomment>
        <translation>复制</translation>
    </message>
    <message id="onboarding.practice.paste_placeholder">
        <source></source>
        <extracomment>Practice paste placeholder</extracomment>
        <translation>粘贴到这里</translation>
    </message>
    <message id="onboarding.practice.pasted">
        <source></source>
        <extracomment>Practice: pasted feedback</extracomment>
        <translation>就这么简单。</translation>
    </message>
    <message id="onboarding.practice.sample">
        <source></source>
        <extracomment>Practice sample text</extracomment>
        <translation>水开了，蛋糕人人有份。</translation>
    </message>
    <message id="onboarding.practice.stacked">
        <source></source>
        <extracomment>Practice: stacked feedback</extracomment>
        <translation>它已经在历史记录中了。</translation>
    </message>
    <message id="onboarding.practice.step1">
        <source></source>
        <extracomment>Practice step 1 guide</extracomment>
        <translation>按此按钮，或选中句子后按 Ctrl+C。</translation>
    </message>
    <message id="onboarding.practice.step2">
        <source></source>
        <extracomment>Practice step 2 guide</extracomment>
        <translation>点击输入框并按 Ctrl+V。然后试试 Shift+Super+V 和回车键。</translation>
    </message>
    <message id="onboarding.practice.title">
        <source></source>
        <extracomment>Practice step title</extracomment>
        <translation>试一次</translation>
    </message>
    <message id="onboarding.start">
        <source></source>
        <extracomment>Onboarding finish button</extracomment>
        <translation>开始使用</translation>
    </message>
    <message id="onboarding.step1.body">
        <source></source>
        <extracomment>Onboarding step 1 body</extracomment>
        <translation>Brimlo 会保留您复制的每一段文字。在任何程序中按 Shift+Super+V，输入要找内容的几个字，再按回车键，它就会出现在您正在工作的地方。</translation>
    </message>
    <message id="onboarding.step1.title">
        <source></source>
        <extracomment>Onboarding step 1 title</extracomment>
        <translation>复制过的内容不会丢失</translation>
    </message>
    <message id="onboarding.step2.body">
        <source></source>
        <extracomment>Onboarding step 2 body</extracomment>
        <translation>权限是指本会话允许 Brimlo 在您正在工作的窗口中替您按下 Ctrl+V。在 X11 桌面上通常已经允许，无需设置。</translation>
    </message>
    <message id="onboarding.step2.title">
        <source></source>
        <extracomment>Onboarding step 2 title</extracomment>
        <translation>让 Brimlo 替您粘贴</translation>
    </message>
    <message id="onboarding.step3.body">
        <source></source>
        <extracomment>Onboarding step 3 body</extracomment>
        <translation>您的多台电脑可以共用一份历史记录，手机也可以传来文字。只需在 ~/⁠.config/⁠BrimloMac/⁠account 中写一行；没有这一行，一切都留在本机。</translation>
    </message>
    <message id="onboarding.step3.title">
        <source></source>
        <extracomment>Onboarding step 3 title</extracomment>
        <translation>您的手机和其他电脑</translation>
    </message>
    <message id="onboarding.window_title">
        <source></source>
        <extracomment>Onboarding window title, for the taskbar</extracomment>
        <translation>欢迎使用 Brimlo</translation>
    </message>
    <message id="pager.prev">
        <source></source>
        <extracomment>Pager previous button</extracomment>
        <translation>上一页</translation>
    </message>
    <message id="palette.empty">
        <source></source>
        <extracomment>Palette empty history</extracomment>
        <translation>这里还没有内容</translation>
    </message>
    <message id="palette.filter_placeholder">
        <source></source>
        <extracomment>Palette filter placeholder</extracomment>
        <translation>筛选</translation>
    </message>
    <message id="palette.hint.close">
        <source></source>
        <extracomment>Hint: close</extracomment>
        <translation>关闭</translation>
    </message>
    <message id="palette.hint.page">
        <source></source>
        <extracomment>Hint: page jump</extracomment>
        <translation>翻页</translation>
    </message>
    <message id="palette.hint.paste_direct">
        <source></source>
        <extracomment>Hint: instant paste</extracomment>
        <translation>粘贴</translation>
    </message>
    <message id="palette.hint.select">
        <source></source>
        <extracomment>Hint: select</extracomment>
        <translation>选择</translation>
    </message>
    <message id="palette.hint.tab">
        <source></source>
        <extracomment>Hint: switch section</extracomment>
        <translation>切换</translation>
    </message>
    <message id="palette.no_match">
        <source></source>
        <extracomment>Palette no matching clips</extracomment>
        <translation>没有匹配项</translation>
    </message>
    <message id="palette.tab_clips">
        <source></source>
        <extracomment>Clips tab</extracomment>
        <translation>历史</translation>
    </message>
    <message id="palette.tab_templates">
        <source></source>
        <extracomment>Templates tab</extracomment>
        <translation>模板</translation>
    </message>
    <message id="palette.title">
        <source></source>
        <extracomment>Quick paste palette title</extracomment>
        <translation>快速粘贴</translation>
    </message>
    <message id="sync.status.applied_iphone">
        <source></source>
        <extracomment>Sync status: applied iPhone copy</extracomment>
        <translation>已复制手机发来的文本</translation>
    </message>
    <message id="sync.status.done" numerus="yes">
        <source></source>
        <extracomment>Sync status: done with count</extracomment>
        <translation>
            <numerusform>已同步，共 %Ln 条</numerusform>
        </translation>
    </message>
    <message id="sync.status.idle">
        <source></source>
        <extracomment>Sync status: not synced</extracomment>
        <translation>尚未同步</translation>
    </message>
    <message id="sync.status.unavailable">
        <source></source>
        <extracomment>Sync status: iCloud unavailable</extracomment>
        <translation>无法同步</translation>
    </message>
    <message id="updates.available">
        <source></source>
        <extracomment>Updates: a newer version. %1$@ is new, %2$@ is the version that runs</extracomment>
        <translation>Brimlo %1$@ 已发布，您的版本是 %2$@。</translation>
    </message>
    <message id="updates.checking">
        <source></source>
        <extracomment>Updates: asking the server</extracomment>
        <translation>正在检查更新…</translation>
    </message>
    <message id="updates.close">
        <source></source>
        <extracomment>Updates: button that closes a message</extracomment>
        <translation>关闭</translation>
    </message>
    <message id="updates.download">
        <source></source>
        <extracomment>Updates: download button</extracomment>
        <translation>打开下载页面</translation>
    </message>
    <message id="updates.insecure">
        <source></source>
        <extracomment>Updates: the answer would not have come over HTTPS</extracomment>
        <translation>更新服务器指向不安全的连接，未读取任何内容。</translation>
    </message>
    <message id="updates.later">
        <source></source>
        <extracomment>Updates: later button</extracomment>
        <translation>以后</translation>
    </message>
    <message id="updates.latest">
        <source></source>
        <extracomment>Updates: nothing newer. %1$@ is the version that runs</extracomment>
        <translation>已是最新版本 %1$@。</translation>
    </message>
    <message id="updates.malformed">
        <source></source>
        <extracomment>Updates: the answer makes no sense</extracomment>
        <translation>无法理解更新服务器的答复。</translation>
    </message>
    <message id="updates.packages">
        <source></source>
        <extracomment>Updates: this build has no feed</extracomment>
        <translation>更新随系统软件包提供。</translation>
    </message>
    <message id="updates.skip">
        <source></source>
        <extracomment>Updates: skip button</extracomment>
        <translation>跳过此版本</translation>
    </message>
    <message id="updates.unreachable">
        <source></source>
        <extracomment>Updates: the server does not answer</extracomment>
        <translation>更新服务器没有响应。</translation>
    </message>
    <message id="updates.whats_new">
        <source></source>
        <extracomment>Updates: heading of the release notes</extracomment>
        <translation>新内容</translation>
    </message>
    <message id="updates.window_title">
        <source></source>
        <extracomment>Updates window title</extracomment>
        <translation>Brimlo 更新</translation>
    </message>
</context>
</TS>
