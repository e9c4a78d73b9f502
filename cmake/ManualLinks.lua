-- Links of the manual from page to page: those to PAGE.md#place lead to PAGE.html#place.
function Link(link)
    if not link.target:find("://", 1, true) then
        link.target = link.target:gsub("^([^#]*)%.md", "%1.html")
    end
    return link
end
