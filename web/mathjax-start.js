// Served in front of MathJax. A page that asks for its formulas to be typeset while MathJax is about to do so by itself
// gets some of them twice; so it is only done when asked for, one after the other.
window.MathJax.startup = {
  typeset: false,
  ready() {
    MathJax.startup.defaultReady();
    const typeset = MathJax.typesetPromise;
    MathJax.typesetPromise = elements =>
      (MathJax.startup.promise = MathJax.startup.promise.then(() => typeset(elements)));
  },
};
