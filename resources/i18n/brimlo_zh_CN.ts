<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name></name>
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
</context>
</TS>
