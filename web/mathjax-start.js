// Served in front of MathJax.
window.MathJax.startup = {
  // A page that asks for its formulas to be typeset while MathJax is about to do so by itself gets some of them twice;
  // so it is only done when asked for, one after the other.
  typeset: false,
  ready() {
    MathJax.startup.defaultReady();
    // Whenever a style sheet with fonts changes, or a font comes, the whole page is laid out anew. So the fonts have a
    // sheet of their own, and those that most formulas need come before the text.
    MathJax.startup.document.addStyleSheet();
    const { sheet } = document.getElementById("MJX-CHTML-styles");
    const fonts = document.head.appendChild(document.createElement("style"));
    for (let rule = sheet.cssRules.length - 1; rule >= 0; --rule) {
      if (!(sheet.cssRules[rule] instanceof CSSFontFaceRule)) continue;
      fonts.append(sheet.cssRules[rule].cssText);
      sheet.deleteRule(rule);
    }
    document.fonts.forEach(font => /^"?MJX(ZERO|TEX|TEX-I|TEX-S1|TEX-S2|TEX-A)"?$/.test(font.family) && font.load());
    const typeset = MathJax.typesetPromise;
    MathJax.typesetPromise = elements =>
      (MathJax.startup.promise = MathJax.startup.promise.then(() => typeset(elements)));
  },
};
