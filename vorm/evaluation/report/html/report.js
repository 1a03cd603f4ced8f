document.documentElement.classList.add("scripted");
addFilter();
drawPlots();
unfoldWhatIsOpen();
keepLinks();
