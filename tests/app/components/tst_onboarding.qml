import QtQuick
import QtTest

// The first start: three steps, one at a time.
StageCase {
    name: "Onboarding"

    readonly property var openAccessibility: "Open Accessibility settings"
    readonly property var openInputMonitoring: "Open Input Monitoring settings"

    function badges(): string {
        return Stage.texts().filter(text => ["DONE", "WAITING", "AUTOMATIC"].includes(text)).join();
    }

    function test_everyStepTellsItsState_data() {
        return [
            { tag: "onboarding-start", badges: "WAITING,AUTOMATIC,AUTOMATIC", button: openAccessibility, canContinue: false },
            { tag: "onboarding-halfway", badges: "DONE,WAITING,AUTOMATIC", button: openInputMonitoring, canContinue: false },
            { tag: "onboarding-permitted", badges: "DONE,DONE,WAITING", button: "", canContinue: true },
            { tag: "onboarding-pad", badges: "DONE,DONE,DONE", button: "", canContinue: true }
        ];
    }
    function test_everyStepTellsItsState(data) {
        Stage.enter(data.tag);
        for (const title of ["Let's get Trellivar running", "Grant Accessibility", "Grant Input Monitoring", "Activate your Trellivar keypad"])
            verifyShown(title);
        compare(badges(), data.badges);
        for (const button of [openAccessibility, openInputMonitoring])
            compare(Stage.control(button) !== null, button === data.button, button);
        compare(control("Continue").enabled, data.canContinue);
    }

    function test_openingAccessibilityAsksForItAsWell() {
        Stage.enter("onboarding-start");
        click(openAccessibility);
        compare(Stage.calls.join(), "ask for accessibility,settings: accessibility");
    }
    function test_openingInputMonitoring() {
        Stage.enter("onboarding-halfway");
        click(openInputMonitoring);
        compare(Stage.calls.join(), "settings: input monitoring");
    }
    function test_openingByKeyboard() {
        Stage.enter("onboarding-start");
        tabTo(openAccessibility);
        Stage.key(Qt.Key_Return);
        compare(Stage.calls.join(), "ask for accessibility,settings: accessibility");
    }

    function test_itAdvancesByItself() {
        Stage.enter("onboarding-start");
        Stage.permit(true, false);
        compare(badges(), "DONE,WAITING,AUTOMATIC");
        Stage.permit(true, true);
        compare(badges(), "DONE,DONE,WAITING");
        verify(Stage.calls.includes("login on"));
        Stage.permit(false, true);
        compare(badges(), "WAITING,DONE,AUTOMATIC");
        verify(!control("Continue").enabled, "what was permitted can be taken back");
    }

    function test_continueDoesNothingUntilItMay() {
        Stage.enter("onboarding-halfway");
        click("Continue");
        verify(Stage.app.isOnboarding);
    }
    function test_continueLeadsToThePad_data() {
        return [{ tag: "mouse", act: () => click("Continue") },
            { tag: "keyboard", act: () => { tabTo("Continue"); Stage.key(Qt.Key_Return); } }];
    }
    function test_continueLeadsToThePad(data) {
        Stage.enter("onboarding-permitted");
        data.act();
        verify(!Stage.app.isOnboarding);
        compare(Stage.count("KeycapView"), 3);
        verifyNotShown("Let's get Trellivar running");
        compare(Stage.control("Continue"), null);
    }
    function test_thePadIsNotWaitedFor() {
        Stage.enter("onboarding-permitted");
        compare(badges(), "DONE,DONE,WAITING");
        verify(control("Continue").enabled);
    }
}
