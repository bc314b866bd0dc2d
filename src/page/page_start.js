// Runs before the tables are read: see .loading in page.css.
"use strict";
document.documentElement.classList.add("loading");
