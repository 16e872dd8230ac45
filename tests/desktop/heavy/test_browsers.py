"""Selections in web pages and their fields, in the browsers as users start them."""

import os

import pytest
from session import wait_until

PAGE = """<!DOCTYPE html><meta charset="utf-8"><title>Tavin page</title>
<p>First paragraph with <b>bold</b> and <a id="link" href="#there">a link</a> in it.</p>
<p>Second paragraph, Grüße.</p>
"""
FIELD = """<!DOCTYPE html><meta charset="utf-8"><title>Tavin page</title>
<p>Text around the field.</p>{field}
<script>
const field = document.getElementById("field");
setInterval(() => {{
  if (field.selectionEnd > 0 && field.selectionEnd - field.selectionStart === field.value.length)
    document.title = "All selected";
}}, 50);
field.focus();
</script>
"""
WORDS = "First paragraph with bold and a link in it. Second paragraph, Grüße."
# Of a shortcut that a Wayland compositor takes, the program in front sees an Alt pressed and let go;
# without the first setting that alone opens the menu bar, before Tavin has looked.
FIREFOX_SETTINGS = """
user_pref("ui.key.menuAccessKeyFocuses", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.page", 0);
user_pref("browser.tabs.warnOnClose", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("datareporting.policy.firstRunURL", "");
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("trailhead.firstrun.didSeeAboutWelcome", true);
"""


def firefox(profile):
    with open(os.path.join(profile, "user.js"), "w", encoding="utf-8") as f:
        f.write(FIREFOX_SETTINGS)
    return ["firefox-esr", "--new-instance", "--profile", profile]


def chromium(profile):
    return ["chromium", "--no-sandbox", "--no-first-run", "--disable-gpu", "--password-store=basic",
            f"--user-data-dir={profile}"]


def words(text):
    return " ".join(text.split())


@pytest.fixture(params=[firefox, chromium], ids=["firefox", "chromium"])
def browse(request, desktop, tmp_path):
    """Opens a page of the given source in the browser; returns its window."""
    def run(source):
        page = tmp_path / "page.html"
        page.write_text(source, encoding="utf-8")
        profile = tmp_path / "profile"
        profile.mkdir()
        return desktop.open([*request.param(str(profile)), f"file://{page}"], "Tavin page",
                            seconds=90)
    return run


def select_all(desktop):
    """Selects by key what the focused field holds. Not every browser tells the display of it."""
    def selected():
        desktop.key("ctrl+a")
        return desktop.windows("All selected")
    wait_until(selected, 30, "selection in the field", interval=0.3)


def wait_for_selected_words(desktop, expected):
    desktop.select_until_matching(lambda text: words(text) == expected,
                                  lambda: desktop.key("ctrl+a"), seconds=30)


def test_page_of_several_paragraphs(tavin, desktop, browse):
    browse(PAGE)
    wait_for_selected_words(desktop, WORDS)
    assert [words(text) for text in tavin.press()] == [WORDS]


def test_page_with_the_focus_on_a_link(tavin, desktop, browse):
    browse(PAGE + '<script>document.getElementById("link").focus();</script>')
    wait_for_selected_words(desktop, WORDS)
    assert [words(text) for text in tavin.press()] == [WORDS]


def test_textarea(tavin, desktop, browse):
    browse(FIELD.format(field='<textarea id="field"> two\nlines </textarea>'))
    select_all(desktop)
    assert tavin.press() == [" two\nlines "]


def test_input(tavin, desktop, browse):
    browse(FIELD.format(field='<input id="field" value=" one line ">'))
    select_all(desktop)
    assert tavin.press() == [" one line "]
