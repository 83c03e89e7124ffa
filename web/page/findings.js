// The list of what is lost or different in a file, most serious first.
import { aboutFinding } from './messages.js';

// `onChoose(finding)` is told of the one that the person wants to see.
export function showFindings(list, summary, file, onChoose) {
  const findings = file.findings ?? [];
  summary.textContent = summaryOf(file);
  list.replaceChildren(...findings.map((finding) => item(file, finding, onChoose)));
}

function summaryOf({ findings }) {
  if (findings === null) return 'What will be lost or differ: not known';
  if (findings.length === 0) return 'Nothing is known to be lost or to differ';
  const kinds = findings.length === 1 ? 'kind' : 'kinds';
  return `${findings.length} ${kinds} of content lost or different`;
}

function item(file, finding, onChoose) {
  const button = document.createElement('button');
  button.type = 'button';
  const severity = document.createElement('strong');
  severity.textContent = finding.severity;
  button.append(severity, ` – ${aboutFinding(file, finding)}`);
  button.addEventListener('click', () => onChoose(finding));
  const row = document.createElement('li');
  row.append(button);
  return row;
}
