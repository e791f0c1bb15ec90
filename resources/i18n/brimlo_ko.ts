<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko">
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
        <translation>이 세션에서는 프로그램이 다른 창에 입력할 수 없습니다(X 서버에 XTEST 확장이 없습니다). 선택한 내용은 클립보드에 들어 있으니 Ctrl+V로 붙여넣으세요.</translation>
    </message>
    <message id="accessibility.unavailable.title">
        <source></source>
        <extracomment>Notification title: this session does not let programs type</extracomment>
        <translation>여기서는 자동으로 붙여넣을 수 없습니다</translation>
    </message>
    <message id="alert.clear_confirm">
        <source></source>
        <extracomment>Clear confirm button</extracomment>
        <translation>지우기</translation>
    </message>
    <message id="alert.clear_message">
        <source></source>
        <extracomment>Clear history alert message</extracomment>
        <translation>복사한 텍스트가 모두 삭제되며 되돌릴 수 없습니다.</translation>
    </message>
    <message id="alert.clear_title">
        <source></source>
        <extracomment>Clear history alert title</extracomment>
        <translation>기록을 지울까요?</translation>
    </message>
    <message id="common.cancel">
        <source></source>
        <extracomment>Cancel button</extracomment>
        <translation>취소</translation>
    </message>
    <message id="footer.auto_apply">
        <source></source>
        <extracomment>Auto-apply iPhone clips toggle</extracomment>
        <translation>휴대전화가 보낸 텍스트 바로 복사</translation>
    </message>
    <message id="footer.ax_required">
        <source></source>
        <extracomment>Accessibility permission notice</extracomment>
        <translation>이 세션에서는 대신 붙여넣을 수 없습니다.</translation>
    </message>
    <message id="footer.check_updates">
        <source></source>
        <extracomment>Check for updates button</extracomment>
        <translation>업데이트 확인</translation>
    </message>
    <message id="footer.clear_history">
        <source></source>
        <extracomment>Clear history button</extracomment>
        <translation>기록 지우기…</translation>
    </message>
    <message id="footer.exclude_passwords">
        <source></source>
        <extracomment>Exclude password-like text toggle</extracomment>
        <translation>비밀번호 같은 텍스트 제외</translation>
    </message>
    <message id="footer.quick_paste">
        <source></source>
        <extracomment>Quick paste toggle</extracomment>
        <translation>Shift+Super+V로 빠른 붙여넣기</translation>
    </message>
    <message id="footer.quit">
        <source></source>
        <extracomment>Quit app button</extracomment>
        <translation>Brimlo 종료</translation>
    </message>
    <message id="footer.show_onboarding">
        <source></source>
        <extracomment>Show onboarding again button</extracomment>
        <translation>소개 보기</translation>
    </message>
    <message id="footer.sync">
        <source></source>
        <extracomment>Sync button</extracomment>
        <translation>동기화</translation>
    </message>
    <message id="menu.count" numerus="yes">
        <source></source>
        <extracomment>History item count in header</extracomment>
        <translation>
            <numerusform>%Ln개</numerusform>
        </translation>
    </message>
    <message id="menu.empty">
        <source></source>
        <extracomment>Empty history placeholder</extracomment>
        <translation>아직 복사한 것이 없습니다. 텍스트를 복사하면 여기에 나타납니다.</translation>
    </message>
    <message id="menu.history_range">
        <source></source>
        <extracomment>History page range: start, end, total</extracomment>
        <translation>%3$lld개 중 %1$lld–%2$lld</translation>
    </message>
    <message id="menu.templates">
        <source></source>
        <extracomment>Templates section header</extracomment>
        <translation>템플릿</translation>
    </message>
    <message id="notify.copied.body">
        <source></source>
        <extracomment>Notification body: press Cmd-V</extracomment>
        <translation>Ctrl+V를 눌러 붙여넣으세요.</translation>
    </message>
    <message id="notify.copied.title">
        <source></source>
        <extracomment>Notification title: copied</extracomment>
        <translation>복사됨</translation>
    </message>
    <message id="onboarding.ax.button">
        <source></source>
        <extracomment>Allow accessibility button</extracomment>
        <translation>접근 권한 요청</translation>
    </message>
    <message id="onboarding.ax.granted">
        <source></source>
        <extracomment>Accessibility granted status</extracomment>
        <translation>Brimlo가 대신 붙여넣을 수 있습니다</translation>
    </message>
    <message id="onboarding.ax.note">
        <source></source>
        <extracomment>Accessibility note</extracomment>
        <translation>접근 권한이 없으면 선택한 텍스트가 클립보드에 놓이며, Ctrl+V는 직접 눌러야 합니다.</translation>
    </message>
    <message id="onboarding.back">
        <source></source>
        <extracomment>Onboarding back button</extracomment>
        <translation>뒤로</translation>
    </message>
    <message id="onboarding.next">
        <source></source>
        <extracomment>Onboarding next button</extracomment>
        <translation>다음</translation>
    </message>
    <message id="onboarding.practice.body">
        <source></source>
        <extracomment>Practice step body</extracomment>
        <translation>이 문장을 복사한 다음 다시 불러와 보세요.</translation>
    </message>
    <message id="onboarding.practice.copy">
        <source></source>
        <extracomment>Copy sample button</extracomment>
        <translation>복사</translation>
    </message>
    <message id="onboarding.practice.paste_placeholder">
        <source></source>
        <extracomment>Practice paste placeholder</extracomment>
        <translation>여기에 붙여넣기</translation>
    </message>
    <message id="onboarding.practice.pasted">
        <source></source>
        <extracomment>Practice: pasted feedback</extracomment>
        <translation>이게 전부입니다.</translation>
    </message>
    <message id="onboarding.practice.sample">
        <source></source>
        <extracomment>Practice sample text</extracomment>
        <translation>차가 준비되었고 케이크도 모두의 몫이 있어요.</translation>
    </message>
    <message id="onboarding.practice.stacked">
        <source></source>
        <extracomment>Practice: stacked feedback</extracomment>
        <translation>이제 기록에 있습니다.</translation>
    </message>
    <message id="onboarding.practice.step1">
        <source></source>
        <extracomment>Practice step 1 guide</extracomment>
        <translation>버튼을 누르거나 문장을 선택하고 Ctrl+C를 누르세요.</translation>
    </message>
    <message id="onboarding.practice.step2">
        <source></source>
        <extracomment>Practice step 2 guide</extracomment>
        <translation>칸을 클릭하고 Ctrl+V를 누르세요. 그다음 Shift+Super+V와 Return을 써 보세요.</translation>
    </message>
    <message id="onboarding.practice.title">
        <source></source>
        <extracomment>Practice step title</extracomment>
        <translation>한 번 해 보기</translation>
    </message>
    <message id="onboarding.start">
        <source></source>
        <extracomment>Onboarding finish button</extracomment>
        <translation>시작</translation>
    </message>
    <message id="onboarding.step1.body">
        <source></source>
        <extracomment>Onboarding step 1 body</extracomment>
        <translation>Brimlo는 복사한 모든 텍스트를 보관합니다. 어느 프로그램에서든 Shift+Super+V를 누르고 찾는 글자를 몇 자 입력한 뒤 Return을 누르면, 작업하던 자리에 들어갑니다.</translation>
    </message>
    <message id="onboarding.step1.title">
        <source></source>
        <extracomment>Onboarding step 1 title</extracomment>
        <translation>복사한 것은 사라지지 않습니다</translation>
    </message>
    <message id="onboarding.step2.body">
        <source></source>
        <extracomment>Onboarding step 2 body</extracomment>
        <translation>접근 권한이란 작업하던 창에서 Brimlo가 대신 Ctrl+V를 누르도록 이 세션이 허용하는 것입니다. X11 데스크톱에서는 보통 허용되어 있어 설정할 것이 없습니다.</translation>
    </message>
    <message id="onboarding.step2.title">
        <source></source>
        <extracomment>Onboarding step 2 title</extracomment>
        <translation>Brimlo가 대신 붙여넣게 하기</translation>
    </message>
    <message id="onboarding.step3.body">
        <source></source>
        <extracomment>Onboarding step 3 body</extracomment>
        <translation>여러 컴퓨터가 하나의 기록을 함께 쓰고, 전화에서 텍스트를 넘겨줄 수 있습니다. ~/⁠.config/⁠BrimloMac/⁠account에 한 줄만 쓰면 됩니다. 없으면 모든 것이 이 컴퓨터에 남습니다.</translation>
    </message>
    <message id="onboarding.step3.title">
        <source></source>
        <extracomment>Onboarding step 3 title</extracomment>
        <translation>전화와 다른 컴퓨터</translation>
    </message>
    <message id="onboarding.window_title">
        <source></source>
        <extracomment>Onboarding window title, for the taskbar</extracomment>
        <translation>Brimlo에 오신 것을 환영합니다</translation>
    </message>
    <message id="pager.prev">
        <source></source>
        <extracomment>Pager previous button</extracomment>
        <translation>이전</translation>
    </message>
    <message id="palette.empty">
        <source></source>
        <extracomment>Palette empty history</extracomment>
        <translation>아직 아무것도 없습니다</translation>
    </message>
    <message id="palette.filter_placeholder">
        <source></source>
        <extracomment>Palette filter placeholder</extracomment>
        <translation>필터</translation>
    </message>
    <message id="palette.hint.close">
        <source></source>
        <extracomment>Hint: close</extracomment>
        <translation>닫기</translation>
    </message>
    <message id="palette.hint.page">
        <source></source>
        <extracomment>Hint: page jump</extracomment>
        <translation>페이지</translation>
    </message>
    <message id="palette.hint.paste_direct">
        <source></source>
        <extracomment>Hint: instant paste</extracomment>
        <translation>붙여넣기</translation>
    </message>
    <message id="palette.hint.select">
        <source></source>
        <extracomment>Hint: select</extracomment>
        <translation>선택</translation>
    </message>
    <message id="palette.hint.tab">
        <source></source>
        <extracomment>Hint: switch section</extracomment>
        <translation>전환</translation>
    </message>
    <message id="palette.no_match">
        <source></source>
        <extracomment>Palette no matching clips</extracomment>
        <translation>일치하는 항목 없음</translation>
    </message>
    <message id="palette.tab_clips">
        <source></source>
        <extracomment>Clips tab</extracomment>
        <translation>기록</translation>
    </message>
    <message id="palette.tab_templates">
        <source></source>
        <extracomment>Templates tab</extracomment>
        <translation>템플릿</translation>
    </message>
    <message id="palette.title">
        <source></source>
        <extracomment>Quick paste palette title</extracomment>
        <translation>빠른 붙여넣기</translation>
    </message>
    <message id="sync.status.applied_iphone">
        <source></source>
        <extracomment>Sync status: applied iPhone copy</extracomment>
        <translation>전화에서 보낸 텍스트를 복사함</translation>
    </message>
    <message id="sync.status.done" numerus="yes">
        <source></source>
        <extracomment>Sync status: done with count</extracomment>
        <translation>
            <numerusform>동기화됨, %Ln개</numerusform>
        </translation>
    </message>
    <message id="sync.status.idle">
        <source></source>
        <extracomment>Sync status: not synced</extracomment>
        <translation>아직 동기화되지 않음</translation>
    </message>
    <message id="sync.status.unavailable">
        <source></source>
        <extracomment>Sync status: iCloud unavailable</extracomment>
        <translation>동기화할 수 없음</translation>
    </message>
    <message id="updates.available">
        <source></source>
        <extracomment>Updates: a newer version. %1$@ is new, %2$@ is the version that runs</extracomment>
        <translation>Brimlo %1$@이(가) 나왔습니다. 현재 버전은 %2$@입니다.</translation>
    </message>
    <message id="updates.checking">
        <source></source>
        <extracomment>Updates: asking the server</extracomment>
        <translation>업데이트를 확인하는 중…</translation>
    </message>
    <message id="updates.close">
        <source></source>
        <extracomment>Updates: button that closes a message</extracomment>
        <translation>닫기</translation>
    </message>
    <message id="updates.download">
        <source></source>
        <extracomment>Updates: download button</extracomment>
        <translation>다운로드 페이지 열기</translation>
    </message>
    <message id="updates.insecure">
        <source></source>
        <extracomment>Updates: the answer would not have come over HTTPS</extracomment>
        <translation>업데이트 서버가 안전하지 않은 연결로 이어져 아무것도 읽지 않았습니다.</translation>
    </message>
    <message id="updates.later">
        <source></source>
        <extracomment>Updates: later button</extracomment>
        <translation>나중에</translation>
    </message>
    <message id="updates.latest">
        <source></source>
        <extracomment>Updates: nothing newer. %1$@ is the version that runs</extracomment>
        <translation>최신 버전 %1$@입니다.</translation>
    </message>
    <message id="updates.malformed">
        <source></source>
        <extracomment>Updates: the answer makes no sense</extracomment>
        <translation>업데이트 서버의 응답을 이해할 수 없습니다.</translation>
    </message>
    <message id="updates.packages">
        <source></source>
        <extracomment>Updates: this build has no feed</extracomment>
        <translation>업데이트는 시스템 패키지로 제공됩니다.</translation>
    </message>
    <message id="updates.skip">
        <source></source>
        <extracomment>Updates: skip button</extracomment>
        <translation>이 버전 건너뛰기</translation>
    </message>
    <message id="updates.unreachable">
        <source></source>
        <extracomment>Updates: the server does not answer</extracomment>
        <translation>업데이트 서버가 응답하지 않습니다.</translation>
    </message>
    <message id="updates.whats_new">
        <source></source>
        <extracomment>Updates: heading of the release notes</extracomment>
        <translation>새로운 점</translation>
    </message>
    <message id="updates.window_title">
        <source></source>
        <extracomment>Updates window title</extracomment>
        <translation>Brimlo 업데이트</translation>
    </message>
</context>
</TS>
