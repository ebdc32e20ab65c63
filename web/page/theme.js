// Dark or light by the system's wish or by the user's: the style sheet has its dark colours in rules for
// the system's, which are made to hold always or never.
const themeSigns = { system: '◐', dark: '☾', light: '☀' };
const themeRules = [...document.styleSheets[0].cssRules].filter((rule) =>
  rule instanceof CSSMediaRule && rule.conditionText.includes('prefers-color-scheme'));
let theme = 'system';

function chooseTheme(name) {
  theme = name;
  document.documentElement.style.colorScheme = theme === 'system' ? '' : theme;
  for (const rule of themeRules) {
    rule.media.mediaText = { system: '(prefers-color-scheme: dark)', dark: 'all', light: 'not all' }[theme];
  }
}

function nextTheme() {
  const names = Object.keys(themeSigns);
  return names[(names.indexOf(theme) + 1) % names.length];
}
