// Lets people search the table of names. The page is complete without it: all that is searched stands in the table.
'use strict';
(() => {
  const box = document.getElementById('search');
  const wanted = document.getElementById('wanted');
  const link = document.getElementById('search-link');
  const hits = document.getElementById('hits');
  const rows = Array.from(document.getElementById('name-table').tBodies[0].rows);
  const names = rows.map((row) => row.cells[0].textContent.toLowerCase());

  function filter() {
    const text = wanted.value.toLowerCase();
    let count = 0;
    rows.forEach((row, i) => {
      const isHit = names[i].includes(text);
      if (isHit) ++count;
      if (row.hidden === isHit) row.hidden = !isHit;
    });
    hits.textContent = count + ' of ' + rows.length + ' names';
    link.setAttribute('href', '#q=' + encodeURIComponent(wanted.value));
  }

  // What follows "#q=" is a search that somebody linked to.
  function takeFromAddress() {
    if (!location.hash.startsWith('#q=')) return false;
    const text = location.hash.slice(3);
    try {
      wanted.value = decodeURIComponent(text);
    } catch (malformed) {
      wanted.value = text;
    }
    filter();
    document.getElementById('names').scrollIntoView();
    return true;
  }

  // A table of many names is filtered when the typing pauses, not at each letter.
  let pause = 0;
  wanted.addEventListener('input', () => {
    clearTimeout(pause);
    pause = setTimeout(filter, 80);
  });
  addEventListener('hashchange', takeFromAddress);

  // On paper nothing opens.
  let opened = [];
  addEventListener('beforeprint', () => {
    opened = Array.from(document.querySelectorAll('details:not([open])'));
    for (const each of opened) each.open = true;
  });
  addEventListener('afterprint', () => {
    for (const each of opened) each.open = false;
  });

  box.hidden = false;
  if (!takeFromAddress()) filter();
})();
